// Undo and redo without limit. A step is kept as what differs, so that thousands of them take little memory.
#pragma once

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
    /// Notes a step that has been taken; what was undone is gone. Steps with the same merge key, not empty, one after
    /// the other become one; undo() and redo() end such a row.
    void note(std::string_view before, std::string_view after, const std::string& label, const std::string& merge_key);

    /// Of the step that undo() or redo() would take; empty without one.
    std::string undo_label() const;
    std::string redo_label() const;

    /// The text before or after that step; there must be one.
    std::string undo(std::string text);
    std::string redo(std::string text);

    /// The next step stands by itself, whatever its merge key.
    void end_row() { row_.clear(); }

private:
    struct Step {
        Change change;
        std::string label;
    };
    std::vector<Step> steps_;
    std::size_t done_ = 0; ///< steps that are not undone
    std::string row_;      ///< merge key of the latest step
};

} // namespace vcc::kit::edit
