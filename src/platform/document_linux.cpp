#include "platform/document.h"
#include "platform/files.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vcc::platform {

namespace {

constexpr std::chrono::milliseconds wait_limit{1500};
constexpr int report_descriptor = 3; ///< where the watcher writes the opener's exit status

/// The result number for an exit status of the opener (xdg-open). Shells return 126 and 127 for a program that cannot
/// be run or found.
int result_of_exit_status(int status) {
    switch (status) {
    case 0:
        return document_opened;
    case 2:
        return document_file_not_found;
    case 3:
    case 126:
    case 127:
        return document_no_association;
    default:
        return document_access_denied;
    }
}

/// Runs in a child process adopted by init: starts the opener, waits for it and reports its exit status. Uses only
/// calls that are safe after fork() in a process with threads.
[[noreturn]] void watch_opener(const char* path, int report) {
    if (report != report_descriptor)
        ::dup2(report, report_descriptor);
    // A viewer that outlives us must not keep our connection to the display.
    ::close_range(report_descriptor + 1, ~0U, 0);
    ::setsid();
    const pid_t opener = ::fork();
    if (opener == 0) {
        ::close(report_descriptor);
        sigset_t none; // signals can end the opener
        ::sigemptyset(&none);
        ::sigprocmask(SIG_SETMASK, &none, nullptr);
        const int nothing = ::open("/dev/null", O_RDWR);
        for (int descriptor = 0; nothing >= 0 && descriptor <= 2; ++descriptor)
            ::dup2(nothing, descriptor);
        ::execlp("xdg-open", "xdg-open", path, static_cast<char*>(nullptr));
        ::_exit(127);
    }
    int status = 0;
    unsigned char answer = 1;
    if (opener > 0 && ::waitpid(opener, &status, 0) == opener && WIFEXITED(status))
        answer = static_cast<unsigned char>(WEXITSTATUS(status));
    const auto written = ::write(report_descriptor, &answer, 1);
    ::_exit(written == 1 ? 0 : 1);
}

/// Waits for the watcher's report; a viewer still open at the limit counts as success.
int await_report(int report) {
    using Clock = std::chrono::steady_clock;
    const auto left = [deadline = Clock::now() + wait_limit] {
        return std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    };
    pollfd waiting{report, POLLIN, 0};
    for (auto ms = left(); ms > 0; ms = left())
        if (::poll(&waiting, 1, static_cast<int>(ms)) > 0) { // a signal (of the timer) may interrupt it
            unsigned char status = 0;
            return ::read(report, &status, 1) == 1 ? result_of_exit_status(status) : document_no_memory;
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
    const pid_t child = ::fork();
    if (child == 0) {
        // The child exits at once, so init adopts its own child and no zombie remains.
        const pid_t watcher = ::fork();
        if (watcher == 0)
            watch_opener(path.c_str(), report[1]);
        ::_exit(watcher > 0 ? 0 : 1);
    }
    ::close(report[1]);
    int result = document_no_memory;
    if (child > 0) {
        int status = 0;
        while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
        }
        result = await_report(report[0]);
    }
    ::close(report[0]);
    return result;
}

} // namespace vcc::platform
