#include "commands.h"

#include "installation.h"
#include "platform/files.h"

#include <cstdio>
#include <filesystem>

namespace vcc::kit {

int run_render(const std::string& folder, const RenderRequest& request, const std::string& output) {
    const std::string target = std::filesystem::absolute(output).string();
    const platform::FolderVisit visit(folder);
    if (!visit.entered()) {
        std::fprintf(stderr, "vcckit: %s is no folder\n", folder.c_str());
        return exit_unusable;
    }
    const Library library(request.depth);
    std::string fault;
    const BitmapPtr picture = render_screen(request, fault);
    if (!picture) {
        std::fprintf(stderr, "vcckit: %s\n", fault.c_str());
        return exit_unusable;
    }
    if (write_png(*picture, target))
        return exit_clean;
    std::fprintf(stderr, "vcckit: cannot write %s\n", output.c_str());
    return exit_unusable;
}

} // namespace vcc::kit
