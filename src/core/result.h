// What a loader returns: a value, or the reason why there is none.
#pragma once

#include <string>
#include <utility>
#include <variant>

namespace vcc {

/// Why there is no value, as the end of a sentence that begins with the file's name ("does not exist").
struct Failure {
    std::string reason;
};

template <typename Value>
class [[nodiscard]] Result {
public:
    Result(Value value) : held_(std::move(value)) {}
    Result(Failure failure) : held_(std::move(failure)) {}

    explicit operator bool() const { return std::holds_alternative<Value>(held_); }

    // Only if there is a value.
    Value& operator*() { return *std::get_if<Value>(&held_); }
    const Value& operator*() const { return *std::get_if<Value>(&held_); }
    Value* operator->() { return std::get_if<Value>(&held_); }
    const Value* operator->() const { return std::get_if<Value>(&held_); }

    Value value_or(Value other) && { return *this ? std::move(**this) : std::move(other); }

    /// Empty if there is a value.
    std::string reason() const { return *this ? std::string() : std::get_if<Failure>(&held_)->reason; }

private:
    std::variant<Value, Failure> held_;
};

} // namespace vcc
