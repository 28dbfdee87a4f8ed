#include "screen/draw.h"

#include "core/geometry.h"
#include "core/installation.h"
#include "core/log.h"
#include "display/buffers.h"
#include "screen/colours.h"
#include "text/fonts.h"
#include "x11/display.h"

#include <algorithm>
#include <cstdint>

namespace vcc {

namespace {

int line_pixel(int colour) {
    return pixel_of(is_colour(colour) ? colour : line_fallback_colour);
}

int index_or_pixel(int colour) {
    return is_colour(colour) ? pixel_of(colour) : colour;
}

int band_colour(int colour, int line, int step_a, int step_b) {
    return as_coordinate(colour + line * (std::int64_t{step_a} + step_b)); // what lies outside the table stays outside
}

} // namespace

void update_screen(BITMAP* source) {
    if (!screen || !source)
        return;
    scare_mouse();
    copy_to_screen(source);
    unscare_mouse();
    // A full queue is sent at once: for a while the display could show the top of the new picture above the bottom of
    // the old one.
    present_screen();
}

void put_pointer(int x, int y) {
    position_mouse(std::clamp(x, 0, layout_width - 1), std::clamp(y, 0, layout_height - 1));
}

void present_screen() {
    platform::flush_display();
    if (const std::string trouble = platform::scaled_display_trouble(); !trouble.empty())
        write_log(trouble);
}

void fill_text_box(BITMAP* target, int x, int y, int width, int colour) {
    if (width != 0)
        fill_rect(target, x, y, x + as_coordinate(width), y + text_box_height(drawing.current_font), colour);
}

void fill_rect(BITMAP* target, int x1, int y1, int x2, int y2, int colour) {
    if (is_colour(colour))
        rectfill(target, as_coordinate(x1), as_coordinate(y1), as_coordinate(x2), as_coordinate(y2), pixel_of(colour));
}

void frame_rect(BITMAP* target, int x1, int y1, int x2, int y2, int colour) {
    rect(target, as_coordinate(x1), as_coordinate(y1), as_coordinate(x2), as_coordinate(y2), index_or_pixel(colour));
}

void clear_to_colour(BITMAP* target, int colour) {
    rectfill(target, 0, 0, target->w, target->h, index_or_pixel(colour));
}

void draw_hline(BITMAP* target, int x1, int y, int x2, int colour) {
    hline(target, as_coordinate(x1), as_coordinate(y), as_coordinate(x2), line_pixel(colour));
}

void draw_vline(BITMAP* target, int x, int y1, int y2, int colour) {
    vline(target, as_coordinate(x), as_coordinate(y1), as_coordinate(y2), line_pixel(colour));
}

void draw_hband(BITMAP* target, int x1, int y, int x2, int colour, int thickness, int step_a, int step_b) {
    thickness = as_coordinate(thickness);
    for (int line = 0; line < thickness; ++line)
        draw_hline(target, x1, as_coordinate(y) - thickness / 2 + line, x2, band_colour(colour, line, step_a, step_b));
}

void draw_vband(BITMAP* target, int x, int y1, int y2, int colour, int thickness, int step_a, int step_b) {
    thickness = as_coordinate(thickness);
    for (int line = 0; line < thickness; ++line)
        draw_vline(target, as_coordinate(x) - thickness / 2 + line, y1, y2, band_colour(colour, line, step_a, step_b));
}

void draw_slot_box(BITMAP* target, const Slot* slots, int index) {
    const Slot& slot = slots[index];
    draw_slot_box_at(target, column_x(drawing.current_font, slot.column), row_y(drawing.current_font, slot.row), slots,
                     index);
}

void draw_slot_box_at(BITMAP* target, int x, int y, const Slot* slots, int index) {
    const Slot& slot = slots[index];
    if (is_boxed(slot))
        fill_rect(target, x, y, x + as_coordinate(slot.box_width), y + as_coordinate(slot.box_height),
                  slot.back_colour);
}

} // namespace vcc
