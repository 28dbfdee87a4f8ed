// Programs that end with this one at the latest.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <sys/types.h>

namespace vcc::kit {

inline constexpr int no_such_program = 127; ///< the exit status if it cannot be started, as shells have it

/// A child process; the destructor ends it.
class Child {
public:
    Child() = default;
    explicit Child(pid_t id) : id_(id) {}
    ~Child() { stop(); }
    Child(Child&& other) noexcept : id_(std::exchange(other.id_, -1)), status_(other.status_) {}
    Child& operator=(Child&& other) noexcept {
        std::swap(id_, other.id_);
        std::swap(status_, other.status_);
        return *this;
    }

    bool started() const { return id_ > 0; }
    bool running() { return !ended(false); }

    /// The exit status, or 128 plus the number of the signal that ended it; nothing while it runs.
    std::optional<int> status() { return running() ? std::nullopt : status_; }

    /// The same, when it has ended.
    std::optional<int> wait() { return ended(true) ? status_ : std::nullopt; }

private:
    bool ended(bool wait);
    void stop();

    pid_t id_ = -1;
    std::optional<int> status_;
};

/// Starts a program, found by PATH when its name has no slash; `prepare` runs in the child and says whether to go on.
Child spawn(std::vector<std::string> words, const std::function<bool()>& prepare);

struct Pipe {
    std::array<int, 2> ends{-1, -1}; ///< to read, to write; closed in the program that a child becomes
    Pipe();
    ~Pipe();
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    void close_writing();
};

} // namespace vcc::kit
