// The screen editor: a program of its own beside this one.
#include "vcckit/commands/commands.h"

#include "platform/files.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include <unistd.h>

namespace vcc::kit {

int run_edit(const EditorRequest& request) {
    namespace fs = std::filesystem;
    const fs::path own = fs::path(platform::program_path()).parent_path();
    const std::string port = std::to_string(request.port);
    for (const fs::path& program : {own / "vcckit-edit", own / "../libexec/veldor/vcckit-edit"}) {
        if (!platform::file_exists(program.string()))
            continue;
        ::execl(program.c_str(), program.c_str(), request.folder.c_str(), request.screens.c_str(), port.c_str(),
                request.browser ? "1" : "0", nullptr);
        std::fprintf(stderr, "vcckit: cannot start %s: %s\n", program.c_str(), std::strerror(errno));
        return exit_unusable;
    }
    std::fprintf(stderr, "vcckit: the editor vcckit-edit is not beside %s\n", platform::program_path().c_str());
    return exit_unusable;
}

} // namespace vcc::kit
