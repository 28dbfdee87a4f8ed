#include "platform/message.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <sstream>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vcc::platform {

namespace {

constexpr int confirmed = 0, closed = 1; ///< exit statuses of a box that has been seen

/// The boxes of GNOME and KDE; the text is the last word.
constexpr std::array<std::array<const char*, 4>, 2> boxes{{
    {"zenity", "--error", "--title=Veldor", "--text"},
    {"kdialog", "--title=Veldor", "--error", nullptr},
}};

bool is_installed(const char* program) {
    const char* const path = std::getenv("PATH");
    std::istringstream folders(path ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');)
        if (::access((folder + "/" + program).c_str(), X_OK) == 0)
            return true;
    return false;
}

/// The program's exit status; -1 if it cannot be started or was ended by a signal.
int run(const std::array<const char*, 4>& box, const std::string& text) {
    std::array<char*, 6> words{};
    std::size_t count = 0;
    for (const char* const word : box)
        if (word)
            words[count++] = const_cast<char*>(word);
    words[count] = const_cast<char*>(text.c_str());
    posix_spawnattr_t attributes;
    ::posix_spawnattr_init(&attributes);
    sigset_t none; // ours block what ends the box
    ::sigemptyset(&none);
    ::posix_spawnattr_setsigmask(&attributes, &none);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);
    pid_t process = 0;
    const bool started = ::posix_spawnp(&process, box[0], nullptr, &attributes, words.data(), environ) == 0;
    ::posix_spawnattr_destroy(&attributes);
    int status = 0;
    while (started && ::waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return started && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

bool show_message(const std::string& text) {
    if (is_installed("xmessage"))
        return false;
    for (const auto& box : boxes)
        if (const int status = run(box, text); status == confirmed || status == closed)
            return true;
    return false;
}

} // namespace vcc::platform
