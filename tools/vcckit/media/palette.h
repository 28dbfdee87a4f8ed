// The best few colours for a picture.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace vcc::kit {

using Colour = std::array<std::uint8_t, 3>; ///< red, green, blue, 0 to 255

/// A colour as in palettes of the graphics library, with 6 bits per component. Pure.
std::uint32_t palette_colour(const Colour& colour);

/// At most `most` colours of 6 bits per component for the pixels: their own if they are few enough, else those of a
/// median cut. Pure.
std::vector<Colour> best_palette(std::span<const Colour> pixels, std::size_t most);

/// The nearest colour of a palette for every palette_colour(). Pure.
std::vector<std::uint8_t> nearest_colours(std::span<const Colour> pixels, std::span<const Colour> palette);

} // namespace vcc::kit
