// Enlarges or reduces a picture: whole steps repeat its pixels; at any other size each shown pixel mixes the pixels
// that it covers by their exact shares. Values in, values out.
#pragma once

#include "x11/picture_place.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vcc::platform {

/// How a pixel stores its colour: four bytes with one per channel, or two bytes with three fields.
struct PixelFormat {
    int bytes = 4;                              ///< 4 or 2
    std::uint32_t red = 0, green = 0, blue = 0; ///< masks of the fields; used with two bytes only
};

/// Whether the scaler supports a format.
bool is_scalable(const PixelFormat& format);

/// A number of pixels or bytes as containers count.
constexpr std::size_t index(int number) {
    return static_cast<std::size_t>(number);
}

/// The rows of a picture in memory.
struct PixelRows {
    std::uint8_t* first = nullptr;
    std::ptrdiff_t pitch = 0; ///< bytes from one row to the next
};

/// Scales one picture size to another, with everything precomputed that can be.
class Scaler {
public:
    Scaler() = default;
    Scaler(Size picture, Size shown, PixelFormat format);

    /// Fills an area of the shown picture, in shown pixels, from the picture.
    void scale(PixelRows picture, PixelRows shown, Area area) const;

private:
    /// One axis of an enlarged picture. A shown pixel lies in one picture pixel or on the edge between two: pick[shown]
    /// is the pixel's number, or the picture's extent plus the number of the edge's first pixel.
    struct Enlarged {
        std::vector<std::uint16_t> pick;
        std::vector<std::uint16_t> weight; ///< by an edge's first pixel: the second pixel's share in 256ths
    };
    /// One axis of a reduced picture: a shown pixel covers several.
    struct Reduced {
        struct Cover {
            int first = 0, count = 0;
            std::size_t share = 0; ///< index of the first pixel's share
        };
        std::vector<Cover> covers;
        std::vector<float> shares;
    };

    static Enlarged enlarged(int picture, int shown);
    static Reduced reduced(int picture, int shown);

    template <typename Pixel>
    void repeat(PixelRows picture, PixelRows shown, Area area) const;
    void mix(PixelRows picture, PixelRows shown, Area area) const;
    void average(PixelRows picture, PixelRows shown, Area area) const;
    const std::uint32_t* unpacked(const std::uint8_t* row, int from, int to, std::uint32_t* scratch) const;
    void store(const std::uint32_t* colours, std::uint8_t* row, int from, int to) const;

    Size picture_;
    PixelFormat format_;
    int step_ = 0; ///< the whole step, else 0
    bool reduces_ = false;
    Enlarged across_, down_;
    Reduced across_reduced_, down_reduced_;
    std::vector<std::uint16_t> edge_weights_; ///< across_.weight, repeated for a colour's four bytes
    std::vector<std::uint32_t> unpack_;       ///< four-byte colour by two-byte pixel
    std::vector<std::uint16_t> pack_;         ///< by channel and byte: its field
};

} // namespace vcc::platform
