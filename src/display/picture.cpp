#include "display/picture.h"

#include "core/files.h"
#include "core/log.h"
#include "display/buffers.h"
#include "display/pictures_ahead.h"
#include "platform/files.h"

#include <algorithm>
#include <cstring>

namespace vcc {

namespace {

constexpr std::uint8_t pcx_manufacturer = 10;

int word_at(std::span<const std::uint8_t> bytes, std::size_t offset) {
    return bytes[offset] | bytes[offset + 1] << 8;
}

constexpr std::size_t planes = 3;
constexpr std::uint8_t run_mark = 0xC0;    ///< marks a byte as the repeat count of the next one
constexpr std::ptrdiff_t store_width = 16; ///< every run writes at least this many bytes, to be overwritten by the next

/// Unpacks one line: its red, green and blue bytes in turn; `data` then points to the next one. Cuts runs at the end of
/// the line. False at the end of the data. May write `store_width` bytes past the line.
///
/// Rendered pictures alternate between single bytes and runs without a pattern, and a branch would be mispredicted
/// every few bytes. So both are handled as runs, and short runs are written at full length.
bool unpack_line(const std::uint8_t*& data, const std::uint8_t* end, std::uint8_t* target, std::size_t length) {
    std::uint8_t* const line_end = target + length;
    const std::uint8_t* at = data;
    const std::uint8_t* const last_pair = end - at < 2 ? at : end - 1;
    while (target < line_end && at < last_pair) {
        const unsigned first = at[0], second = at[1];
        const bool run = first >= run_mark;
        const auto value = static_cast<std::uint8_t>(run ? second : first);
        const std::ptrdiff_t count = run ? static_cast<std::ptrdiff_t>(first - run_mark) : 1;
        at += run ? 2 : 1;
        std::memset(target, value, store_width);
        if (count > store_width) [[unlikely]]
            std::memset(target, value, static_cast<std::size_t>(std::min(count, line_end - target)));
        target += count;
    }
    if (target < line_end && at != end && *at < run_mark) // the last byte of the file
        *target++ = *at++;
    data = at;
    return target >= line_end;
}

/// Reads the shifts once: the compiler must assume that every pixel written could change them.
void write_pixels(const std::uint8_t* red, std::size_t plane, unsigned char* target, int width) {
    const std::uint8_t *const green = red + plane, *const blue = green + plane;
    const int red_shift = _rgb_r_shift_32, green_shift = _rgb_g_shift_32, blue_shift = _rgb_b_shift_32;
    for (int x = 0; x < width; ++x, target += 4) {
        const std::uint32_t pixel = std::uint32_t{red[x]} << red_shift | std::uint32_t{green[x]} << green_shift |
                                    std::uint32_t{blue[x]} << blue_shift;
        std::memcpy(target, &pixel, sizeof pixel);
    }
}

/// Longer padding could fill the memory: such a picture is left to the library, which reads it byte by byte.
bool can_be_unpacked(const PictureHeader& header) {
    return header.readable && header.bits == 24 && header.bytes_per_line <= picture_limit + 1;
}

std::size_t line_size(const PictureHeader& header) {
    return planes * static_cast<std::size_t>(header.bytes_per_line);
}

/// The picture in the colour depth in force, exactly as the library's own reader makes it. Null if memory runs out.
BitmapPtr make_bitmap(const UnpackedPicture& picture) {
    const auto& [header, samples] = picture;
    BitmapPtr bitmap(create_bitmap_ex(32, header.width, header.height));
    if (!bitmap)
        return nullptr;
    const auto plane = static_cast<std::size_t>(header.bytes_per_line);
    const std::uint8_t* line = samples.get();
    for (int y = 0; y < header.height; ++y, line += planes * plane)
        write_pixels(line, plane, bitmap->line[y], header.width);
    return get_color_depth() == 32 ? std::move(bitmap) : copy_of(bitmap.get());
}

} // namespace

PictureHeader read_picture_header(std::span<const std::uint8_t> bytes) {
    PictureHeader header;
    if (bytes.size() < picture_header_size || bytes[0] != pcx_manufacturer)
        return header;
    const int bits_per_plane = bytes[3], count = bytes[65];
    header.bytes_per_line = word_at(bytes, 66);
    header.width = word_at(bytes, 8) - word_at(bytes, 4) + 1;
    header.height = word_at(bytes, 10) - word_at(bytes, 6) + 1;
    header.bits = bits_per_plane * count;
    const auto fits = [](int side) { return side >= 1 && side <= picture_limit; };
    header.readable = bits_per_plane == 8 && (count == 1 || count == 3) && fits(header.width) && fits(header.height) &&
                      header.bytes_per_line >= header.width;
    return header;
}

std::size_t UnpackedPicture::size() const {
    return line_size(header) * static_cast<std::size_t>(header.height);
}

std::optional<UnpackedPicture> unpack_picture(std::span<const std::uint8_t> file) {
    UnpackedPicture picture{read_picture_header(file), nullptr};
    if (!can_be_unpacked(picture.header))
        return std::nullopt;
    const std::size_t length = line_size(picture.header);
    picture.samples = std::make_unique_for_overwrite<std::uint8_t[]>(picture.size() + store_width);
    const std::uint8_t *data = file.data() + picture_header_size, *const data_end = file.data() + file.size();
    for (std::uint8_t *line = picture.samples.get(), *end = line + picture.size(); line < end; line += length)
        if (!unpack_line(data, data_end, line, length))
            return std::nullopt;
    return picture;
}

Result<BitmapPtr> load_picture(std::string_view path, PALETTE* palette) {
    std::optional<UnpackedPicture> picture = take_picture(path);
    if (!picture) {
        const auto file = read_file(path, picture_file_limit);
        if (!file)
            return Failure{file.reason()};
        const std::span bytes(reinterpret_cast<const std::uint8_t*>(file->data()), file->size());
        // The library's reader trusts any size in the header, so the header is checked first.
        const PictureHeader header = read_picture_header(bytes);
        if (!header.readable)
            return Failure{unfit_picture};
        picture = unpack_picture(bytes);
        if (!picture && can_be_unpacked(header)) // the library shows as much as there is
            write_log(format_text("Picture is incomplete: %.*s", static_cast<int>(path.size()), path.data()));
    }
    BitmapPtr bitmap = picture
                           ? make_bitmap(*picture)
                           : BitmapPtr(load_pcx(platform::resolve_path(path).c_str(), palette ? *palette : nullptr));
    if (picture && palette)
        generate_332_palette(*palette); // which the library gives to every picture without its own
    if (!bitmap)
        return Failure{unfit_picture};
    return bitmap;
}

} // namespace vcc
