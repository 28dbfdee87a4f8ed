// One entry field while the input loop waits on it: keys to text, text to picture.
#pragma once

#include "interaction/field_draw.h"
#include "interaction/keys.h"
#include "interaction/screen_run.h"
#include "interaction/text_edit.h"
#include "screen/draw.h"

namespace vcc {

/// Edits the edit text of a run's current slot. Fields are drawn without smoothed edges as long as the object lives.
class FieldEntry {
public:
    /// Draws the cursor at position 0 in the current font.
    FieldEntry(ScreenRun& run, const Slot& look, bool clear_keyboard);

    /// Applies a key, draws the field and brings what changed to the display. Gives the key back; a finished entry
    /// gives Enter, so that the last character is never taken for a key or command that has its number.
    KeyEvent apply(const KeyEvent& key);

private:
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
