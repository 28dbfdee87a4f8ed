#include "platform/desktop.h"
#include "platform/files.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vcc::platform {

namespace {

using Words = std::vector<const char*>;

constexpr std::chrono::milliseconds wait_limit{1500};
constexpr int report_descriptor = 3;

/// The shell ends at once and init adopts the opener, so no child of ours is left.
constexpr const char* open_and_report = R"({ xdg-open "$1" </dev/null >/dev/null 2>&1 3>&-; echo $? >&3; } &)";

/// Starts a program; -1 if that fails. Blocks no signals, and of our descriptors has only `report`, as number 3; with
/// that it also outlives the terminal.
pid_t start(Words words, int report = -1) {
    words.push_back(nullptr);
    posix_spawn_file_actions_t files;
    ::posix_spawn_file_actions_init(&files);
    if (report >= 0)
        ::posix_spawn_file_actions_adddup2(&files, report, report_descriptor);
    ::posix_spawn_file_actions_addclosefrom_np(&files, report_descriptor + (report >= 0 ? 1 : 0));
    posix_spawnattr_t attributes;
    ::posix_spawnattr_init(&attributes);
    sigset_t none;
    ::sigemptyset(&none);
    ::posix_spawnattr_setsigmask(&attributes, &none);
    const int flags = POSIX_SPAWN_SETSIGMASK | (report >= 0 ? POSIX_SPAWN_SETSID : 0);
    ::posix_spawnattr_setflags(&attributes, static_cast<short>(flags));
    pid_t process = -1;
    if (::posix_spawnp(&process, words[0], &files, &attributes, const_cast<char**>(words.data()), environ) != 0)
        process = -1;
    ::posix_spawnattr_destroy(&attributes);
    ::posix_spawn_file_actions_destroy(&files);
    return process;
}

/// Waits for a program's exit status; -1 if it was not started or a signal has ended it.
int exit_status(pid_t process) {
    int status = 0;
    while (process > 0 && ::waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return process > 0 && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// The result number for an exit status of the opener. Shells return 126 and 127 for a program that cannot be run or
/// found.
int result_of_exit_status(int status) {
    if (status == 0)
        return document_opened;
    if (status == 2)
        return document_file_not_found;
    return status == 3 || status == 126 || status == 127 ? document_no_association : document_access_denied;
}

/// Waits for the opener's exit status; a viewer still open at the limit counts as success.
int await_report(int report) {
    using Clock = std::chrono::steady_clock;
    const auto left = [deadline = Clock::now() + wait_limit] {
        return std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    };
    pollfd waiting{report, POLLIN, 0};
    for (auto ms = left(); ms > 0; ms = left())
        if (::poll(&waiting, 1, static_cast<int>(ms)) > 0) { // a signal (of the timer) may interrupt it
            char status[4] = {};
            return ::read(report, status, sizeof status - 1) > 0 ? result_of_exit_status(std::atoi(status))
                                                                 : document_no_memory;
        }
    return document_opened;
}

} // namespace

int open_document(const std::string& name) {
    std::string path = resolve_path(name);
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    if (!folder.empty() && !std::filesystem::is_directory(folder, error))
        return document_path_not_found;
    if (!file_exists(path))
        return document_file_not_found;
    if (::access(path.c_str(), R_OK) != 0)
        return document_access_denied;
    if (path.front() == '-') // would be taken for an option
        path.insert(0, "./");

    int report[2] = {-1, -1};
    if (::pipe2(report, O_CLOEXEC) != 0)
        return document_no_memory;
    const pid_t shell = start({"/bin/sh", "-c", open_and_report, "sh", path.c_str()}, report[1]);
    ::close(report[1]);
    const int result = exit_status(shell) == 0 ? await_report(report[0]) : document_no_memory;
    ::close(report[0]);
    return result;
}

bool show_message(const std::string& text) {
    if (exit_status(start({"/bin/sh", "-c", "command -v xmessage >/dev/null"})) == 0)
        return false;
    constexpr int confirmed = 0, closed = 1; // exit statuses of a box that has been seen
    for (const Words& box : {Words{"zenity", "--error", "--title=Veldor", "--text", text.c_str()},
                             Words{"kdialog", "--title=Veldor", "--error", text.c_str()}})
        if (const int status = exit_status(start(box)); status == confirmed || status == closed)
            return true;
    return false;
}

} // namespace vcc::platform
