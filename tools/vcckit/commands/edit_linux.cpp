// The screen editor: a program of its own beside this one.
#include "vcckit/commands/commands.h"

#include "platform/files.h"

#include <cerrno>
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
        return complain("cannot start " + program.string() + ": " + std::strerror(errno));
    }
    return complain("the editor vcckit-edit is not beside " + platform::program_path());
}

} // namespace vcc::kit
