// Entry fields: what a key does to their text, and one while the player types into it.
#pragma once

#include "core/scope.h"
#include "interaction/keys.h"
#include "interaction/screen_run.h"
#include "screen/draw_slot.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace vcc {

struct FieldEdit {
    std::string text;       ///< padded with blanks to the field's length; the first change cuts a longer one
    std::size_t cursor = 0; ///< below the length
};

enum class EditOutcome {
    ignored,   ///< the key does nothing in this field
    changed,   ///< text, cursor or mode may differ: draw the field again
    at_edge,   ///< the cursor cannot move further; nothing to draw
    forbidden, ///< the character is not allowed in a numeric field
    full       ///< the last position was typed over: the entry is finished
};

/// Applies a key to a field of `length` characters (at least 1). `numeric` allows digits, blank and "-" only. Insert
/// flips `insert`.
EditOutcome edit_field(FieldEdit& field, const KeyEvent& key, std::size_t length, bool numeric, bool editable,
                       int& insert);

/// Edits the text of a run's current slot. Turns smoothed edges off for its life.
class FieldEntry {
public:
    /// Draws the cursor at position 0 in the current font. `look`, the slot or its toggle record, gives box and
    /// colours. With `clear_keyboard`, a key at an edge drops those that wait behind it.
    FieldEntry(ScreenRun& run, const Slot& look, bool clear_keyboard);

    /// Applies a key, draws the field and shows what changed. Returns the key, or Enter for a finished entry: its last
    /// character must not be taken for the key or command with the same number.
    KeyEvent apply(const KeyEvent& key);

    const std::string& text() const { return edit_.text; }

private:
    bool editable() const { return look_.box_width != 0 && place_.size > 0; } ///< with box and cursor block
    void draw(std::string_view covering = "");
    void draw_cursor();

    SwitchSet<int> hard_edges_;
    ScreenRun& run_;
    const Slot &slot_, &look_;
    const FieldPlace& place_;
    FieldEdit edit_;
    bool clear_keyboard_;
};

} // namespace vcc
