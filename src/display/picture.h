// Picture files of an installation: PCX. True-colour ones are read in two steps: unpacking the bytes, which takes long
// but needs no graphics library, and making a bitmap of them.
#pragma once

#include "core/handles.h"
#include "core/result.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

namespace vcc {

inline constexpr int picture_limit = 4096; ///< pixels of a side
inline constexpr int picture_header_size = 128;
inline constexpr std::size_t picture_file_limit =
    std::size_t{picture_limit} * picture_limit * 6; ///< bytes, for the largest picture without a single run

struct PictureHeader {
    int width = 0, height = 0; ///< pixels
    int bits = 0;              ///< 8 or 24
    int bytes_per_line = 0;    ///< of one plane
    bool readable = false;     ///< by the library: 8 bits with one or three planes, sides of 1 to 4096 pixels, lines
                               ///< at least as long as the picture is wide
};
inline constexpr const char* unfit_picture = "is no picture that the program can read";
PictureHeader read_picture_header(std::span<const std::uint8_t> bytes);

/// The samples of a 24-bit picture, line by line: bytes_per_line of red, of green, of blue.
struct UnpackedPicture {
    PictureHeader header;
    std::unique_ptr<std::uint8_t[]> samples;

    std::size_t size() const; ///< bytes of the samples
};

/// Unpacks the bytes of a whole file. Nothing if it is no readable 24-bit picture, its lines are mostly padding, or its
/// data end early.
/// Does not use the graphics library, so any thread may call it.
std::optional<UnpackedPicture> unpack_picture(std::span<const std::uint8_t> file);

/// Loads a PCX picture, converted to the colour depth in force, and its palette (`palette` may be null). Fails if the
/// file is missing, is no PCX picture or has a header that would mislead the library.
Result<BitmapPtr> load_picture(std::string_view path, PALETTE* palette = nullptr);

} // namespace vcc
