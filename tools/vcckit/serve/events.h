// What the server tells its pages by itself.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace vcc::kit::edit {

/// Every listener gets every event from its beginning on, and the last of each state before it. All functions may be
/// called from any thread.
class Events {
public:
    /// `data` is one line.
    void tell(const std::string& event, const std::string& data);

    /// The same for what is so until the next event of this kind.
    void tell_state(const std::string& event, const std::string& data);

    /// Ends all waiting, for good.
    void close();

    std::uint64_t listen();
    void leave(std::uint64_t listener);

    /// What a listener is sent next: events as the protocol has them, or a comment when there was none for `limit`.
    /// Nothing when it is over.
    std::optional<std::string> next(std::uint64_t listener, std::chrono::milliseconds limit);

private:
    void send(const std::string& event);

    std::mutex mutex_;
    std::condition_variable news_;
    std::map<std::uint64_t, std::deque<std::string>> waiting_; ///< events by listener
    std::map<std::string, std::string> states_;                ///< the last event of each kind
    std::uint64_t last_ = 0;
    bool closed_ = false;
};

} // namespace vcc::kit::edit
