// Text: plain, on a box, with a shadow. Coordinates are pixels of the target; colours are indices into the colour
// table.
#pragma once

#include <allegro.h>

#include <string_view>

namespace vcc {

/// Copies what is behind a text in the current font from a clean picture, if there is one: one row more than the cell,
/// as in the boxes behind texts, because the descenders of fonts 0 and 4 reach into it.
void restore_behind_text(BITMAP* clean, BITMAP* target, int x, int y, std::string_view text);

/// Draw text in the current font; an index outside the table draws nothing. With `update`, update_screen() follows in
/// any case.
void draw_text(BITMAP* target, int x, int y, std::string_view text, int colour, bool update);
void draw_boxed_text(BITMAP* target, int x, int y, std::string_view text, int colour, int box_colour, bool update);
/// Draws text with a one-pixel shadow, which is a pixel value, not an index. No caller sets `update` today.
void draw_shadow_text(BITMAP* target, int x, int y, std::string_view text, int colour, int shadow_pixel, bool update);

/// Length in characters times the current font's cell width. For texts that must keep to the grid; unused today.
int text_cell_width(std::string_view text);

} // namespace vcc
