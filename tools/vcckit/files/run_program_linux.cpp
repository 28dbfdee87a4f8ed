#include "vcckit/files/run_program.h"

#include "vcckit/files/child.h"

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace vcc::kit {

std::vector<std::string> command_line(int argc, const char* const* argv) {
    return argc > 0 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

std::optional<int> run_program(const std::vector<std::string>& words, bool with_errors, const TakeOutput& take) {
    Child child;
    Pipe output; // closed before the child is ended, which could not write otherwise
    child = spawn(words, [&] {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL); // what it writes is of no use without us
        const int nothing = ::open("/dev/null", O_RDWR), out = output.ends[1];
        return nothing >= 0 && ::dup2(nothing, STDIN_FILENO) >= 0 && ::dup2(out, STDOUT_FILENO) >= 0 &&
               ::dup2(with_errors ? out : nothing, STDERR_FILENO) >= 0;
    });
    output.close_writing();
    std::string piece(1 << 16, '\0');
    for (;;) {
        const ssize_t count = ::read(output.ends[0], piece.data(), piece.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        if (!take(std::string_view(piece).substr(0, static_cast<std::size_t>(count))))
            return 128 + SIGTERM;
    }
    return child.error() == 0 ? child.wait() : std::nullopt;
}

} // namespace vcc::kit
