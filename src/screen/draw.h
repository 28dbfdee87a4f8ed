// Drawing primitives. Coordinates are pixels of the target; colours are indices into the colour table.
#pragma once

#include "screen/slot.h"
#include "text/drawing.h"

#include <allegro.h>

#include <string_view>

namespace vcc {

/// Copies the whole 800 x 600 picture to the display with the pointer hidden, and sends it at once.
void update_screen(BITMAP* source);

/// Sends what was drawn on the display (the library draws the pointer there) at once instead of up to 10 ms later. Call
/// it once per frame while waiting for the player, before resting; it costs 3 microseconds if nothing was drawn.
void present_screen();

/// Places the mouse pointer, clamped to the picture: outside it keys would not reach the program.
void put_pointer(int x, int y);

/// Draw text in the current font; an index outside the table draws nothing. With `update`, update_screen() follows in
/// any case.
void draw_text(BITMAP* target, int x, int y, std::string_view text, int colour, bool update);
void draw_boxed_text(BITMAP* target, int x, int y, std::string_view text, int colour, int box_colour, bool update);
/// Draws text with a one-pixel shadow, which is a pixel value, not an index. `update` has no caller here today.
void draw_shadow_text(BITMAP* target, int x, int y, std::string_view text, int colour, int shadow_pixel, bool update);

/// Draws a box of the current font's text box height; nothing if the width or height is 0.
void fill_text_box(BITMAP* target, int x, int y, int width, int colour);
/// Length in characters times the current font's cell width. For texts that must keep to the grid; there are none
/// today.
int text_cell_width(std::string_view text);

void fill_rect(BITMAP* target, int x1, int y1, int x2, int y2, int colour); ///< nothing for an index outside the table
void frame_rect(BITMAP* target, int x1, int y1, int x2, int y2,
                int colour);                                        ///< an index outside the table is a pixel value
void clear_to_colour(BITMAP* target, int colour);                   ///< an index outside the table is a pixel value
void draw_hline(BITMAP* target, int x1, int y, int x2, int colour); ///< an index outside the table draws in entry 12
void draw_vline(BITMAP* target, int x, int y1, int y2, int colour);
void draw_hband(BITMAP* target, int x1, int y, int x2, int colour, int thickness, int step_a, int step_b);
void draw_vband(BITMAP* target, int x, int y1, int y2, int colour, int thickness, int step_a, int step_b);

/// Draw a slot's box at its cell in the current font's grid (without a caller today), or at a given place.
void draw_slot_box(BITMAP* target, const Slot* slots, int index);
void draw_slot_box_at(BITMAP* target, int x, int y, const Slot* slots, int index);

} // namespace vcc
