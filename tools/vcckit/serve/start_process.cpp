#include "serve/start_process.h"

#include <csignal>
#include <cstring>
#include <thread>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vcc::kit::edit {

namespace {

/// What a child begins with: owned, so that every way out gives it back.
struct Beginning {
    Beginning() {
        posix_spawnattr_init(&attributes);
        posix_spawn_file_actions_init(&actions);
    }
    ~Beginning() {
        posix_spawn_file_actions_destroy(&actions);
        posix_spawnattr_destroy(&attributes);
    }
    Beginning(const Beginning&) = delete;
    Beginning& operator=(const Beginning&) = delete;

    posix_spawnattr_t attributes{};
    posix_spawn_file_actions_t actions{};
};

} // namespace

std::string start_process(const std::vector<std::string>& command, const std::string& folder) {
    std::vector<std::string> words = command;
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    Beginning begin;
    sigset_t none, all;
    sigemptyset(&none);
    sigfillset(&all);
    posix_spawnattr_setflags(&begin.attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    posix_spawnattr_setsigmask(&begin.attributes, &none);
    posix_spawnattr_setsigdefault(&begin.attributes, &all);
    posix_spawn_file_actions_addchdir_np(&begin.actions, folder.c_str());
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        posix_spawn_file_actions_addopen(&begin.actions, stream, "/dev/null", O_RDWR, 0);
    posix_spawn_file_actions_addclosefrom_np(&begin.actions, STDERR_FILENO + 1); // the server's connections

    pid_t child = 0;
    const int error =
        ::posix_spawnp(&child, arguments[0], &begin.actions, &begin.attributes, arguments.data(), environ);
    if (error != 0)
        return "cannot start " + command.front() + ": " + std::strerror(error);
    std::thread([child] { ::waitpid(child, nullptr, 0); }).detach();
    return {};
}

} // namespace vcc::kit::edit
