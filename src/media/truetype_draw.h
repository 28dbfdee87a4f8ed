// Glyph pictures, and drawing them into bitmaps of every depth.
#pragma once

#include <allegro.h>

#include <cstdint>
#include <vector>

namespace vcc::platform {

/// A character as coverage values, 0 (none) to 255 (all of the pixel).
struct GlyphPicture {
    int width = 0, height = 0; ///< pixels
    int left = 0;              ///< columns from the pen to the first column
    int top = 0;               ///< rows from the top of the cell to the first row
    std::vector<std::uint8_t> coverage;
};

/// Draws a glyph with its pen at (x, y), y being the top of its cell, inside the target's clipping rectangle. At 8
/// bits, where colours cannot be mixed, pixels at least half covered take the colour.
void draw_glyph(BITMAP* target, const GlyphPicture& glyph, int x, int y, int colour);

} // namespace vcc::platform
