// Boxes, lines, and copying to the display. Coordinates are pixels of the target; colours are indices into the colour
// table.
#pragma once

#include "screen/slot.h"

#include <allegro.h>

namespace vcc {

/// Copies the whole 800 x 600 picture to the display with the pointer hidden, and sends it at once.
void update_screen(BITMAP* source);

/// Sends what was drawn on the display (the library draws the pointer there) at once instead of up to 10 ms later. Call
/// it once per frame while waiting for the player, before resting; it costs 3 microseconds if nothing was drawn.
void present_screen();

/// Places the mouse pointer, clamped to the picture: outside it keys would not reach the program.
void put_pointer(int x, int y);

/// Draws a box of the current font's text box height; nothing if the width is 0.
void fill_text_box(BITMAP* target, int x, int y, int width, int colour);
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
