// The colour table. Every colour in the data files is an index into it.
#pragma once

#include <array>
#include <cstdint>

namespace vcc {

inline constexpr int colour_count = 256;
inline constexpr int line_fallback_colour = 12;
extern const std::array<std::uint32_t, colour_count> colour_table; ///< 0xRRGGBB

constexpr bool is_colour(int index) {
    return index >= 0 && index < colour_count;
}

/// Pixel value of an index (0 to 255) in the colour depth in force.
int pixel_of(int index);

} // namespace vcc
