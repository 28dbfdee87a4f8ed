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

/// Mixes `ink` into `paper` by coverage / 255 in each field of the masks, whatever the order of the colours. Pure.
template <std::uint32_t... field_masks>
constexpr std::uint32_t mix_fields(std::uint32_t paper, std::uint32_t ink, std::uint32_t coverage) {
    const auto mix = [&](std::uint64_t mask) {
        const std::uint64_t unit = mask & (~mask + 1); // the lowest bit of the field
        const std::uint64_t from = (paper & mask) / unit, to = (ink & mask) / unit;
        return static_cast<std::uint32_t>((from * (255 - coverage) + to * coverage + 127) / 255 * unit);
    };
    return (mix(field_masks) | ...);
}
constexpr std::uint32_t mix_32(std::uint32_t paper, std::uint32_t ink, std::uint32_t coverage) {
    return mix_fields<0xFF, 0xFF00, 0xFF0000>(paper, ink, coverage);
}
constexpr std::uint32_t mix_16(std::uint32_t paper, std::uint32_t ink, std::uint32_t coverage) {
    return mix_fields<0x1F, 0x7E0, 0xF800>(paper, ink, coverage);
}
constexpr std::uint32_t mix_15(std::uint32_t paper, std::uint32_t ink, std::uint32_t coverage) {
    return mix_fields<0x1F, 0x3E0, 0x7C00>(paper, ink, coverage);
}

/// Draws a glyph with its pen at (x, y), y being the top of its cell, inside the target's clipping rectangle. At 8
/// bits, where colours cannot be mixed, pixels at least half covered take the colour.
void draw_glyph(BITMAP* target, const GlyphPicture& glyph, int x, int y, int colour);

} // namespace vcc::platform
