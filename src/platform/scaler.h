// Showing a picture larger or smaller: whole steps repeat its pixels, any other size gives each shown pixel the exact
// shares of the pixels that it covers. Values in, values out.
#pragma once

#include "platform/picture_place.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vcc::platform {

/// How a pixel holds its colour: four bytes, one of them a channel each, or two bytes with three fields.
struct PixelFormat {
    int bytes = 4;                              ///< 4 or 2
    std::uint32_t red = 0, green = 0, blue = 0; ///< masks of the fields; used with two bytes only
    constexpr bool operator==(const PixelFormat&) const = default;
};

/// True for a format that the scaler can work with.
bool is_scalable(const PixelFormat& format);

/// The rows of a picture in memory.
struct PixelRows {
    std::uint8_t* first = nullptr;
    std::ptrdiff_t pitch = 0; ///< bytes from one row to the next
};

/// Scales one picture size to another; holds what can be computed beforehand.
class Scaler {
public:
    Scaler() = default;
    Scaler(Size picture, Size shown, PixelFormat format);

    /// Fills an area of the shown picture, in its pixels, from a picture of which shown_area() names that area.
    void scale(PixelRows picture, PixelRows shown, Area area) const;

private:
    /// One axis of a picture that is not reduced. A shown pixel covers one of the picture's pixels or lies on the edge
    /// between two: pick[shown] is a pixel's number, or the picture's extent plus the number of the edge's first pixel.
    struct Enlarged {
        std::vector<std::uint16_t> pick;
        std::vector<std::uint16_t> weight; ///< by an edge's first pixel: the share of the second, in 256ths
    };
    /// One axis of a picture that is reduced: a shown pixel covers several.
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
    int step_ = 0; ///< of a whole step, else 0
    bool reduces_ = false;
    Enlarged across_, down_;
    Reduced across_reduced_, down_reduced_;
    std::vector<std::uint16_t> edge_weights_; ///< across_.weight once for each of a colour's four bytes
    std::vector<std::uint32_t> unpack_;       ///< by pixel of two bytes: its colour as four
    std::vector<std::uint16_t> pack_;         ///< by channel and byte: its field
};

} // namespace vcc::platform
