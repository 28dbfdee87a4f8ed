#include "vcckit/serve/events.h"

namespace vcc::kit::edit {

namespace {

constexpr std::size_t event_limit = 1000; ///< of a listener that does not take them

std::string as_sent(const std::string& event, const std::string& data) {
    return "event: " + event + "\ndata: " + data + "\n\n";
}

} // namespace

void Events::send(const std::string& event) {
    std::erase_if(listeners_, [](const auto& listener) { return listener.expired(); });
    for (const auto& listener : listeners_)
        if (const Listener events = listener.lock()) {
            if (events->size() == event_limit)
                events->pop_front();
            events->push_back(event);
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

Events::Listener Events::listen() {
    const std::lock_guard lock(mutex_);
    auto events = std::make_shared<std::deque<std::string>>();
    for (const auto& [name, event] : states_)
        events->push_back(event);
    listeners_.push_back(events);
    return events;
}

std::optional<std::string> Events::next(const Listener& events, std::chrono::milliseconds limit) {
    std::unique_lock lock(mutex_);
    news_.wait_for(lock, limit, [&] { return closed_ || !events->empty(); });
    if (closed_)
        return std::nullopt;
    if (events->empty())
        return ": still here\n\n";
    std::string all;
    for (const std::string& each : *events)
        all += each;
    events->clear();
    return all;
}

} // namespace vcc::kit::edit
