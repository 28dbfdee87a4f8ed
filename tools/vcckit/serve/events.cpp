#include "vcckit/serve/events.h"

namespace vcc::kit::edit {

namespace {

constexpr std::size_t event_limit = 1000; ///< of a listener that does not take them

std::string as_sent(const std::string& event, const std::string& data) {
    return "event: " + event + "\ndata: " + data + "\n\n";
}

} // namespace

void Events::send(const std::string& event) {
    for (auto& [listener, events] : waiting_) {
        if (events.size() == event_limit)
            events.pop_front();
        events.push_back(event);
    }
    news_.notify_all();
}

void Events::tell(const std::string& event, const std::string& data) {
    const std::lock_guard lock(mutex_);
    send(as_sent(event, data));
}

void Events::tell_state(const std::string& event, const std::string& data) {
    const std::lock_guard lock(mutex_);
    send(states_[event] = as_sent(event, data));
}

void Events::close() {
    const std::lock_guard lock(mutex_);
    closed_ = true;
    news_.notify_all();
}

std::uint64_t Events::listen() {
    const std::lock_guard lock(mutex_);
    std::deque<std::string>& events = waiting_[++last_];
    for (const auto& [name, event] : states_)
        events.push_back(event);
    return last_;
}

void Events::leave(std::uint64_t listener) {
    const std::lock_guard lock(mutex_);
    waiting_.erase(listener);
}

std::optional<std::string> Events::next(std::uint64_t listener, std::chrono::milliseconds limit) {
    std::unique_lock lock(mutex_);
    const auto found = waiting_.find(listener);
    if (found == waiting_.end())
        return std::nullopt;
    std::deque<std::string>& events = found->second;
    news_.wait_for(lock, limit, [&] { return closed_ || !events.empty(); });
    if (closed_)
        return std::nullopt;
    if (events.empty())
        return ": still here\n\n";
    std::string all;
    for (const std::string& each : events)
        all += each;
    events.clear();
    return all;
}

} // namespace vcc::kit::edit
