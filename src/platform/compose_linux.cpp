#include "platform/compose.h"

#include "platform/files.h"

#include <cstdlib>
#include <filesystem>

namespace vcc::platform {

namespace {

constexpr const char* variable = "XCOMPOSEFILE"; ///< of the X library; programs that we start must not inherit it

bool player_has_a_list() {
    const char* const home = std::getenv("HOME");
    return std::getenv(variable) || (home && file_exists(std::string(home) + "/.XCompose"));
}

} // namespace

ComposeList::ComposeList(const std::string& path) {
    if (player_has_a_list() || !file_exists(path))
        return;
    std::error_code error;
    const std::filesystem::path whole = std::filesystem::absolute(resolve_path(path), error);
    ours_ = !error && ::setenv(variable, whole.c_str(), 1) == 0;
}

ComposeList::~ComposeList() {
    if (ours_)
        ::unsetenv(variable);
}

} // namespace vcc::platform
