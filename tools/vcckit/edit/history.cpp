#include "vcckit/edit/history.h"

#include <algorithm>

namespace vcc::kit::edit {

namespace {

/// A byte within a character of UTF-8, behind its first.
bool is_continuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

} // namespace

Change change_between(std::string_view before, std::string_view after) {
    const std::size_t shorter = std::min(before.size(), after.size());
    std::size_t head = 0, tail = 0;
    while (head < shorter && before[head] == after[head])
        ++head;
    while (head > 0 && ((head < before.size() && is_continuation(before[head])) ||
                        (head < after.size() && is_continuation(after[head]))))
        --head;
    while (tail < shorter - head && before[before.size() - 1 - tail] == after[after.size() - 1 - tail])
        ++tail;
    while (tail > 0 && is_continuation(before[before.size() - tail]))
        --tail;
    return {head, std::string(before.substr(head, before.size() - head - tail)),
            std::string(after.substr(head, after.size() - head - tail))};
}

std::string changed(std::string text, const Change& change) {
    return text.replace(change.at, change.before.size(), change.after);
}

std::string unchanged(std::string text, const Change& change) {
    return text.replace(change.at, change.after.size(), change.before);
}

void History::note(std::string_view before, std::string_view after, const std::string& label,
                   const std::string& merge_key, std::optional<MergeConflict> resolved) {
    const bool goes_on = !merge_key.empty() && merge_key == row_ && done_ > 0;
    steps_.resize(done_);
    if (goes_on) {
        Step& step = steps_.back();
        step.change = change_between(unchanged(std::string(before), step.change), after);
    } else {
        steps_.push_back({change_between(before, after), label, std::move(resolved)});
        ++done_;
    }
    row_ = merge_key;
}

const History::Step* History::next(bool back) const {
    if (back)
        return done_ > 0 ? &steps_[done_ - 1] : nullptr;
    return done_ < steps_.size() ? &steps_[done_] : nullptr;
}

std::string History::travel(std::string text, bool back) {
    row_.clear();
    return back ? unchanged(std::move(text), steps_[--done_].change) : changed(std::move(text), steps_[done_++].change);
}

bool History::fits(const std::string& text) const {
    if (done_ > steps_.size())
        return false;
    for (const bool back : {false, true}) {
        History way = *this;
        std::string now = text;
        while (const Step* const step = way.next(back)) {
            const auto& [at, before, after] = step->change;
            const std::string& part = back ? after : before;
            if (at > now.size() || now.compare(at, part.size(), part) != 0)
                return false;
            now = way.travel(std::move(now), back);
        }
    }
    return true;
}

} // namespace vcc::kit::edit
