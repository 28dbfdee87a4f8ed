// True-colour PCX pictures in two halves: unpacking their bytes, which takes long and needs no graphics library, and
// making a bitmap of them.
#pragma once

#include "display/picture.h"

#include <cstddef>
#include <memory>
#include <optional>

namespace vcc {

/// The samples of a picture of 24 bits, line by line: bytes_per_line of red, of green and of blue.
struct UnpackedPicture {
    PictureHeader header;
    std::unique_ptr<std::uint8_t[]> samples;

    std::size_t size() const; ///< bytes of the samples
};

/// What the bytes of a whole file hold. Nothing when it is no picture of 24 bits with a sound header or when its data
/// ends early. Calls nothing of the graphics library, so any thread may use it.
std::optional<UnpackedPicture> unpack_picture(std::span<const std::uint8_t> file);

/// The picture in the colour depth in force, the same as the library's own reader makes. Null without memory.
BitmapPtr make_bitmap(const UnpackedPicture& picture);

} // namespace vcc
