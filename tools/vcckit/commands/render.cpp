#include "vcckit/commands/commands.h"

#include "platform/files.h"
#include "vcckit/check/installation.h"
#include "vcckit/files/file_set.h"

#include <cstdio>
#include <filesystem>

namespace vcc::kit {

int run_render(const std::string& folder, const RenderRequest& request, const std::string& output) {
    const bool to_stdout = output == "-";
    const std::string target = platform::whole_name(output);
    const platform::FolderVisit visit(folder);
    if (!visit.entered())
        return complain(folder + " is not a folder");
    const Library library(request.depth);
    std::string fault;
    const BitmapPtr picture = render_screen(request, fault);
    if (!picture)
        return complain(fault);
    const std::string bytes = png_bytes(rgb_of(*picture));
    if (to_stdout) {
        if (!bytes.empty() && std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size() &&
            std::fflush(stdout) == 0)
            return exit_clean;
        fault = "cannot write to standard output";
    } else {
        fault = bytes.empty() ? "there is no memory for the PNG file" : write_whole_file(target, bytes);
    }
    return fault.empty() ? exit_clean : complain(fault);
}

} // namespace vcc::kit
