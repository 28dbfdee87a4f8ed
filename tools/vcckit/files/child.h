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

/// A child process; the destructor ends it.
class Child {
public:
    Child() = default;
    Child(pid_t id, int error) : id_(id), error_(error) {}
    ~Child() { stop(); }
    Child(Child&& other) noexcept : id_(std::exchange(other.id_, -1)), error_(other.error_), status_(other.status_) {}
    Child& operator=(Child&& other) noexcept {
        std::swap(id_, other.id_);
        std::swap(error_, other.error_);
        std::swap(status_, other.status_);
        return *this;
    }

    /// Why it could not be started, as in errno; 0 if it was.
    int error() const { return error_; }
    bool running() { return !ended(false); }

    /// The exit status, or 128 plus the number of the signal that ended it; nothing while it runs.
    std::optional<int> status() { return running() ? std::nullopt : status_; }

    /// The same, when it has ended.
    std::optional<int> wait() { return ended(true) ? status_ : std::nullopt; }

    /// Lets it outlive this object.
    pid_t release() { return std::exchange(id_, -1); }

private:
    bool ended(bool wait);
    void stop();

    pid_t id_ = -1;
    int error_ = 0;
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
