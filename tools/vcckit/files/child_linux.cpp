#include "vcckit/files/child.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <thread>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vcc::kit {

namespace {

constexpr std::chrono::milliseconds child_end_limit{3000};

} // namespace

bool Child::ended(bool wait) {
    if (id_ <= 0)
        return true;
    int status = 0;
    pid_t changed = 0;
    while ((changed = ::waitpid(id_, &status, wait ? 0 : WNOHANG)) < 0 && errno == EINTR) {
    }
    if (changed != id_)
        return false;
    status_ = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    id_ = -1;
    return true;
}

void Child::stop() {
    if (!running())
        return;
    ::kill(id_, SIGTERM);
    for (const auto end = std::chrono::steady_clock::now() + child_end_limit;
         running() && std::chrono::steady_clock::now() < end;)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    if (running()) {
        ::kill(id_, SIGKILL);
        wait();
    }
}

Child spawn(std::vector<std::string> words, const std::function<bool()>& prepare) {
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    Pipe failure; // says nothing, and is closed, when the program begins
    const pid_t parent = ::getpid(), id = ::fork();
    if (id == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
        if (::getppid() == parent && prepare())
            ::execvp(arguments.front(), arguments.data());
        const int error = errno;
        ::_exit(::write(failure.ends[1], &error, sizeof error) > 0 ? 1 : 2);
    }
    int error = id < 0 ? errno : 0;
    failure.close_writing();
    while (id > 0 && ::read(failure.ends[0], &error, sizeof error) < 0 && errno == EINTR) {
    }
    Child child(id, error);
    if (error != 0)
        child.wait();
    return child;
}

Pipe::Pipe() {
    [[maybe_unused]] const int result = ::pipe2(ends.data(), O_CLOEXEC);
}

Pipe::~Pipe() {
    for (const int end : ends)
        if (end >= 0)
            ::close(end);
}

void Pipe::close_writing() {
    ::close(ends[1]);
    ends[1] = -1;
}

} // namespace vcc::kit
