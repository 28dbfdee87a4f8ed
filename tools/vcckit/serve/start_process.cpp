#include "vcckit/serve/start_process.h"

#include "vcckit/files/child.h"

#include <chrono>
#include <csignal>
#include <cstring>
#include <thread>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vcc::kit::edit {

using namespace std::chrono_literals;

Result<int> start_process(const std::vector<std::string>& command, const std::string& folder) {
    Child child = spawn(command, [&] {
        ::prctl(PR_SET_PDEATHSIG, 0);
        ::setsid();
        std::signal(SIGPIPE, SIG_DFL); // which the server ignores
        sigset_t none;                 // signals can end it
        ::sigemptyset(&none);
        ::sigprocmask(SIG_SETMASK, &none, nullptr);
        const int nothing = ::open("/dev/null", O_RDWR);
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            ::dup2(nothing, stream);
        return ::close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC) == 0 && // the server's connections
               ::chdir(folder.c_str()) == 0;
    });
    if (child.error() != 0)
        return Failure{"cannot start " + command.front() + ": " + std::strerror(child.error())};
    const pid_t id = child.release();
    for (auto waited = 0ms; waited < 700ms; waited += 20ms) { // one without a display ends at once
        std::this_thread::sleep_for(20ms);
        int status = 0;
        if (::waitpid(id, &status, WNOHANG) != id)
            continue;
        if (WIFEXITED(status) && WEXITSTATUS(status) == 0)
            return 0;
        return Failure{command.front() + " ended at once: is there a display? (DISPLAY)"};
    }
    return id;
}

bool runs(int process) {
    return ::waitpid(process, nullptr, WNOHANG) == 0;
}

} // namespace vcc::kit::edit
