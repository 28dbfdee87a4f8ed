// Draws an entry field being edited: its text, and as the cursor one character in inverse colours.
#pragma once

#include "screen/draw_slot.h"
#include "screen/slot.h"

#include <allegro.h>

#include <string_view>

namespace vcc {

/// How a field being edited looks.
struct FieldLook {
    int text_colour = 0;
    int box_colour = 0;
    bool editable = false;  ///< with box and cursor block
    int shadow_colour = -1; ///< below 0: no shadow
};

/// The look of a slot's field; `look`, the slot or its toggle record, gives font, box and colours.
FieldLook field_look(const Slot& slot, const Slot& look);

/// Draws the whole text in the current font.
void draw_field(BITMAP* target, const FieldPlace& field, const FieldLook& look, std::string_view text);

/// Draws the cursor over the field; its box shows the mode (0 overwrite, 1 insert).
void draw_cursor(BITMAP* target, const FieldPlace& field, const FieldLook& look, std::string_view text, int cursor,
                 int mode);

} // namespace vcc
