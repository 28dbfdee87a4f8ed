#include "interaction/field_draw.h"

#include "screen/draw.h"
#include "screen/draw_text.h"
#include "text/fonts.h"

#include <algorithm>
#include <cstddef>

namespace vcc {

namespace {

constexpr int insert_colour_step = 16;

} // namespace

FieldLook field_look(const Slot& slot, const Slot& look) {
    return {look.fore_colour, look.back_colour, look.box_width != 0,
            has_shadow(slot) ? static_cast<unsigned char>(slot.sound_flags[1]) : -1};
}

void draw_field(BITMAP* target, const FieldPlace& field, const FieldLook& look, std::string_view text) {
    if (look.editable)
        fill_text_box(target, field.x, field.y, column_x(drawing.current_font, field.size), look.box_colour);
    if (look.shadow_colour >= 0)
        draw_text(target, field.x + 1, field.y + 1, text, look.shadow_colour, false);
    draw_text(target, field.x, field.y, text, look.text_colour, false);
}

void draw_cursor(BITMAP* target, const FieldPlace& field, const FieldLook& look, std::string_view text, int cursor,
                 int mode) {
    if (!look.editable)
        return;
    const std::size_t before = std::min(static_cast<std::size_t>(cursor), text.size());
    const std::string_view character = before < text.size() ? text.substr(before, 1) : std::string_view(" ");
    const int x = field.x + text_width(drawing.current_font, text.substr(0, before));
    fill_text_box(target, x, field.y, text_width(drawing.current_font, character),
                  look.text_colour + insert_colour_step * mode);
    draw_text(target, x, field.y, character, look.box_colour, false); // no shadow: it would touch the next character
}

} // namespace vcc
