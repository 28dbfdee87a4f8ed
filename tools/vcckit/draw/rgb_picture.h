// Pictures that need no graphics library.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vcc::kit {

/// Red, green and blue of every pixel, line by line from the top.
struct RgbPicture {
    int width = 0, height = 0; ///< pixels; 0 without a picture
    std::vector<std::uint8_t> rgb;

    bool operator==(const RgbPicture&) const = default;
};

/// The share of pixels, 0 to 1, that are equal in both pictures at 15 bits; 0 if their sizes differ. Pure.
double share_alike(const RgbPicture& one, const RgbPicture& other);

/// The picture as a PNG file of 8 bits per colour; empty if memory runs out; `quickly` takes a third of the
/// time and half as many bytes more. Pure.
std::string png_bytes(const RgbPicture& picture, bool quickly = false);

} // namespace vcc::kit
