// What the server tells its pages by itself.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

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

    /// What waits for a listener, who listens as long as it lives.
    using Listener = std::shared_ptr<std::deque<std::string>>;
    Listener listen();

    /// What a listener is sent next: events as the protocol has them, or a comment when there was none for `limit`.
    /// Nothing when it is over.
    std::optional<std::string> next(const Listener& events, std::chrono::milliseconds limit);

private:
    void send(const std::string& event);

    std::mutex mutex_;
    std::condition_variable news_;
    std::vector<std::weak_ptr<std::deque<std::string>>> listeners_;
    std::map<std::string, std::string> states_; ///< the last event of each kind
    bool closed_ = false;
};

} // namespace vcc::kit::edit
