// Undo and redo without limit. A step is kept as what differs, so that thousands of them take little memory.
#pragma once

#include "vcckit/edit/merge.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vcc::kit::edit {

/// One stretch of a text that became another.
struct Change {
    std::size_t at = 0; ///< byte of both texts
    std::string before, after;
};

/// The shortest stretch that tells the texts apart; both ends are between characters of UTF-8. Pure.
Change change_between(std::string_view before, std::string_view after);

/// The text after a change, or before it. The change must fit the text.
std::string changed(std::string text, const Change& change);
std::string unchanged(std::string text, const Change& change);

class History {
public:
    struct Step {
        Change change;
        std::string label;
        std::optional<MergeConflict> resolved; ///< that this step has decided, as it was before
    };

    History() = default;
    /// As it was kept.
    History(std::vector<Step> steps, std::size_t done) : steps_(std::move(steps)), done_(done) {}

    /// Notes a step that has been taken; what was undone is gone. Steps with the same merge key, not empty, one after
    /// the other become one; travel() ends such a row.
    void note(std::string_view before, std::string_view after, const std::string& label, const std::string& merge_key,
              std::optional<MergeConflict> resolved = {});

    /// The step that an undo (`back`) or redo would take; null without one.
    const Step* next(bool back) const;
    /// The text before or after that step; there must be one.
    std::string travel(std::string text, bool back);

    /// The next step stands by itself, whatever its merge key.
    void end_row() { row_.clear(); }

    const std::vector<Step>& steps() const { return steps_; }
    std::size_t done() const { return done_; } ///< steps that are not undone

    /// Whether the steps lead to this text, and from it.
    bool fits(const std::string& text) const;

private:
    std::vector<Step> steps_;
    std::size_t done_ = 0;
    std::string row_; ///< merge key of the latest step
};

} // namespace vcc::kit::edit
