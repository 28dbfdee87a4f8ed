// True-colour PCX pictures in two steps: unpacking the bytes, which takes long but needs no graphics library, and
// making a bitmap of them.
#pragma once

#include "display/picture.h"

#include <cstddef>
#include <memory>
#include <optional>

namespace vcc {

/// The samples of a 24-bit picture, line by line: bytes_per_line of red, of green, of blue.
struct UnpackedPicture {
    PictureHeader header;
    std::unique_ptr<std::uint8_t[]> samples;

    std::size_t size() const; ///< bytes of the samples
};

/// Unpacks the bytes of a whole file. Nothing if it is no readable 24-bit picture, or its data end early.
/// Does not use the graphics library, so any thread may call it.
std::optional<UnpackedPicture> unpack_picture(std::span<const std::uint8_t> file);

/// The picture in the colour depth in force, exactly as the library's own reader makes it. Null if memory runs out.
BitmapPtr make_bitmap(const UnpackedPicture& picture);

} // namespace vcc
