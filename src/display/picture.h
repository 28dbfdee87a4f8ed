// Picture files of an installation.
#pragma once

#include "core/handles.h"
#include "core/result.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace vcc {

inline constexpr int picture_limit = 4096; ///< pixels of a side
inline constexpr int picture_header_size = 128;
inline constexpr std::size_t picture_file_limit =
    std::size_t{picture_limit} * picture_limit * 6; ///< bytes; none of them in a run

/// The header of a PCX file.
struct PictureHeader {
    int width = 0, height = 0; ///< pixels
    int bits = 0;              ///< 8 or 24
    int bytes_per_line = 0;    ///< of one plane
    bool readable = false;     ///< by the library: 8 bits with one or three planes, sides of 1 to 4096 pixels, lines
                               ///< at least as long as the picture is wide
};
inline constexpr const char* unfit_picture = "is no picture that the program can read";
PictureHeader read_picture_header(std::span<const std::uint8_t> bytes);

/// Loads a PCX picture, converted to the colour depth in force, and its palette (`palette` may be null). Fails if the
/// file is missing, is no PCX picture or has a header that the library cannot be trusted with.
Result<BitmapPtr> load_picture(std::string_view path, PALETTE* palette = nullptr);

} // namespace vcc
