// Drawing an entry field while it is edited: its text, and the cursor as the character in inverse colours.
#pragma once

#include "screen/draw_slot.h"
#include "screen/slot.h"

#include <allegro.h>

#include <string_view>

namespace vcc {

/// How a field looks while it is edited.
struct FieldLook {
    int text_colour = 0;
    int box_colour = 0;
    bool editable = false;  ///< with box and cursor block
    int shadow_colour = -1; ///< below 0: no shadow
};

/// The look of a slot's field; `look` is the record that gives font, box and colours (the slot or its toggle record).
FieldLook field_look(const Slot& slot, const Slot& look);

/// The whole text, in the current font.
void draw_field(BITMAP* target, const FieldPlace& field, const FieldLook& look, std::string_view text);

/// The character at the cursor, over what draw_field() drew; its box shows the mode (0 overwrite, 1 insert).
void draw_cursor(BITMAP* target, const FieldPlace& field, const FieldLook& look, std::string_view text, int cursor,
                 int mode);

} // namespace vcc
