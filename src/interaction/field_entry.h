// Entry fields: what a key does to their text, and one while the player types into it.
#pragma once

#include "core/scope.h"
#include "interaction/keys.h"
#include "interaction/screen_run.h"
#include "screen/draw_slot.h"

#include <string>

namespace vcc {

struct FieldEdit {
    std::string text; ///< padded with blanks to the field's length; the first change cuts a longer one
    int cursor = 0;   ///< 0 to length - 1
};

enum class EditOutcome {
    ignored,   ///< the key does nothing in this field
    changed,   ///< text, cursor or mode may differ: draw the field again
    at_edge,   ///< the cursor cannot move further; nothing to draw
    forbidden, ///< the character is not allowed in a numeric field
    full       ///< the last position was typed over: the entry is finished
};

/// Applies a key of kind character or editing to a field of `length` characters (1 to 254). `numeric` allows digits,
/// blank and "-" only. Insert flips `insert`.
EditOutcome edit_field(FieldEdit& field, const KeyEvent& key, int length, bool numeric, bool editable, int& insert);

/// How a field being edited looks.
struct FieldLook {
    int text_colour = 0;
    int box_colour = 0;
    bool editable = false;  ///< with box and cursor block
    int shadow_colour = -1; ///< below 0: no shadow
};

/// Draws the cursor over the field; its box shows the mode (0 overwrite, 1 insert).
void draw_cursor(BITMAP* target, const FieldPlace& field, const FieldLook& look, std::string_view text, int cursor,
                 int mode);

/// Edits the edit text of a run's current slot. Turns smoothed edges off for its life.
class FieldEntry {
public:
    /// Draws the cursor at position 0 in the current font.
    FieldEntry(ScreenRun& run, const Slot& look, bool clear_keyboard);

    /// Applies a key, draws the field and shows what changed. Returns the key, or Enter for a finished entry: its last
    /// character must not be taken for the key or command with the same number.
    KeyEvent apply(const KeyEvent& key);

private:
    void restore_background(const std::string& text);
    void draw();

    SwitchSet<int> hard_edges_;
    ScreenRun& run_;
    const Slot& slot_;
    FieldPlace place_;
    FieldLook look_;
    FieldEdit edit_;
    bool clear_keyboard_;
};

} // namespace vcc
