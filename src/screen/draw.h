// Drawing primitives. Coordinates are pixels of the target; colours are indices into the colour table.
#pragma once

#include "screen/slot.h"

#include <allegro.h>

#include <string_view>

namespace vcc {

inline int text_on_box = 0; ///< the text being drawn sits on a filled box: hard edges, no background restore
inline int full_redraw = 0; ///< a whole screen is being drawn on a fresh background: no background restore

/// Sets a switch for the life of the object, and clears it (or gives it its value back) at the end.
template <typename Value>
class SwitchSet {
public:
    SwitchSet(Value& which, Value value) : which_(which), before_(which) { which_ = value; }
    ~SwitchSet() { which_ = before_; }
    SwitchSet(const SwitchSet&) = delete;
    SwitchSet& operator=(const SwitchSet&) = delete;

private:
    Value& which_;
    Value before_;
};

/// Copies the whole 800 x 600 picture to the display, the pointer hidden meanwhile, and sends it at once.
void update_screen(BITMAP* source);

/// Sends what was drawn on the display (the library draws the pointer there) at once instead of up to 10 ms later.
/// Cheap (3 microseconds) when nothing was drawn: whoever waits for the player calls it once per frame, before resting.
void present_screen();

/// Places the mouse pointer; outside the picture keys would no longer reach the program, so its edge is the limit.
void put_pointer(int x, int y);

/// Text in the current font; an index outside the table draws nothing. With `update`, update_screen() follows in any
/// case.
void draw_text(BITMAP* target, int x, int y, std::string_view text, int colour, bool update);
void draw_boxed_text(BITMAP* target, int x, int y, std::string_view text, int colour, int box_colour, bool update);
/// Text with a one-pixel shadow; the shadow is a pixel value, not an index. Nobody passes `update` here: it keeps the
/// three alike.
void draw_shadow_text(BITMAP* target, int x, int y, std::string_view text, int colour, int shadow_pixel, bool update);

/// A box as high as the current font's text box; nothing when the width or height is 0.
void fill_text_box(BITMAP* target, int x, int y, int width, int colour);
/// Length in characters times the current font's cell width. Kept for texts that must lie in the grid; none does now.
int text_cell_width(std::string_view text);

void fill_rect(BITMAP* target, int x1, int y1, int x2, int y2, int colour); ///< nothing for an index outside the table
void frame_rect(BITMAP* target, int x1, int y1, int x2, int y2,
                int colour);                                        ///< an index outside the table is a pixel value
void clear_to_colour(BITMAP* target, int colour);                   ///< an index outside the table is a pixel value
void draw_hline(BITMAP* target, int x1, int y, int x2, int colour); ///< an index outside the table draws in entry 12
void draw_vline(BITMAP* target, int x, int y1, int y2, int colour);
void draw_hband(BITMAP* target, int x1, int y, int x2, int colour, int thickness, int step_a, int step_b);
void draw_vband(BITMAP* target, int x, int y1, int y2, int colour, int thickness, int step_a, int step_b);

/// A slot's box at its cell position in the current font's grid (slots are drawn by the other one), or at a given
/// place.
void draw_slot_box(BITMAP* target, const Slot* slots, int index);
void draw_slot_box_at(BITMAP* target, int x, int y, const Slot* slots, int index);

} // namespace vcc
