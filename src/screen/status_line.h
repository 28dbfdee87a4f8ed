// The one-line message area at the bottom of the screen.
#pragma once

#include <allegro.h>

#include <string_view>

namespace vcc {

/// The bitmap that messages are written on (borrowed; null: messages are dropped).
void set_status_target(BITMAP* target);

/// Fixes the line's position: column 2 and third row from the bottom of the current font's grid.
void place_status_line();

/// Writes two texts one after the other in a font; nothing reaches the display until the next update_screen().
void show_status(std::string_view first, std::string_view second, int font);

} // namespace vcc
