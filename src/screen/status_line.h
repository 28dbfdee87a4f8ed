// The one-line message area at the bottom of the screen.
#pragma once

#include <string_view>

namespace vcc {

/// Places the line at column 2 and the third row from the bottom of the current font's grid.
void place_status_line();

/// Writes two texts in a row in a font, into the buffer of the screens if it is loaded; the display shows them after
/// the next update_screen().
void show_status(std::string_view first, std::string_view second, int font = 4);

} // namespace vcc
