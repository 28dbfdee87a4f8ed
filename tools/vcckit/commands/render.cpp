#include "vcckit/commands/commands.h"

#include "platform/files.h"
#include "vcckit/check/installation.h"
#include "vcckit/files/new_file.h"

#include <cstdio>

namespace vcc::kit {

int run_render(const std::string& folder, const RenderRequest& request, const std::string& output) {
    const bool to_stdout = output == "-";
    const std::string target = platform::whole_name(output);
    const platform::FolderVisit visit(folder);
    if (!visit.entered())
        return complain(folder + " is not a folder");
    const Library library(request.depth);
    const auto picture = Renderer().draw(request);
    if (!picture)
        return complain(picture.reason());
    const std::string bytes = png_bytes(rgb_of(**picture));
    if (bytes.empty())
        return complain("there is no memory for the PNG file");
    if (!to_stdout)
        return exit_of(write_whole_file(target, bytes));
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size() && std::fflush(stdout) == 0;
    return exit_of(written ? "" : "cannot write to standard output");
}

} // namespace vcc::kit
