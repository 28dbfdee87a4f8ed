#pragma once

namespace vcc {

/// Runs a task at the end of its scope.
template <typename Task>
class AtEnd {
public:
    explicit AtEnd(Task task) : task_(task) {}
    ~AtEnd() { task_(); }
    AtEnd& operator=(AtEnd&&) = delete;

private:
    Task task_;
};

/// Sets a variable for the life of the object, or lets it change, then restores its value.
template <typename Value>
class SwitchSet {
public:
    explicit SwitchSet(Value& which) : which_(which), before_(which) {}
    SwitchSet(Value& which, Value value) : which_(which), before_(which) { which_ = value; }
    ~SwitchSet() { which_ = before_; }
    SwitchSet& operator=(SwitchSet&&) = delete;

private:
    Value& which_;
    Value before_;
};

} // namespace vcc
