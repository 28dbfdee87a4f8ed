// Pictures in few colours.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace vcc::kit {

using Colour = std::array<std::uint8_t, 3>; ///< red, green, blue, 0 to 255

/// A palette of 6 bits per component, as the graphics library has them, and the number of each pixel's colour in it.
struct PalettePicture {
    std::vector<Colour> palette;
    std::vector<std::uint8_t> pixels;
};

/// At most `most` colours, up to 256, for the pixels: their own if they are few enough, else those of a median cut.
/// Pure.
PalettePicture in_few_colours(std::span<const Colour> pixels, std::size_t most);

} // namespace vcc::kit
