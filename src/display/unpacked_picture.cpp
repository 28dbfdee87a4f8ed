#include "display/unpacked_picture.h"

#include <allegro.h>

#include <algorithm>
#include <cstring>
#include <vector>

namespace vcc {

namespace {

constexpr std::size_t planes = 3;
constexpr std::uint8_t run_mark = 0xC0; ///< in a byte whose other bits count how often the next byte repeats
constexpr int bytes_per_line_limit = picture_limit + 1; ///< longer padding is not kept: it could fill the memory
constexpr std::ptrdiff_t store = 16; ///< every run writes at least this many bytes, to be overwritten by the next

/// Unpacks one line: its red, green and blue bytes in turn. Cuts runs at the end of the line. False at the end of the
/// data. May write `store` bytes past the line.
///
/// Rendered pictures alternate between single bytes and runs without a pattern, and a branch would be mispredicted
/// every few bytes. So both are handled as runs, and short runs are written at full length.
class LineDecoder {
public:
    explicit LineDecoder(std::span<const std::uint8_t> data) : at_(data.data()), end_(at_ + data.size()) {}

    bool read(std::uint8_t* target, std::size_t length) {
        std::uint8_t* const line_end = target + length;
        const std::uint8_t* at = at_;
        const std::uint8_t* const last_pair = end_ - at < 2 ? at : end_ - 1;
        while (target < line_end && at < last_pair) {
            const unsigned first = at[0], second = at[1];
            const bool run = first >= run_mark;
            const auto value = static_cast<std::uint8_t>(run ? second : first);
            const std::ptrdiff_t count = run ? static_cast<std::ptrdiff_t>(first - run_mark) : 1;
            at += run ? 2 : 1;
            std::memset(target, value, store);
            if (count > store) [[unlikely]]
                std::memset(target, value, static_cast<std::size_t>(std::min(count, line_end - target)));
            target += count;
        }
        if (target < line_end && at != end_ && *at < run_mark) // the last byte of the file
            *target++ = *at++;
        at_ = at;
        return target >= line_end;
    }

private:
    const std::uint8_t* at_;
    const std::uint8_t* end_;
};

/// Reads the shifts once: the compiler must assume that every pixel written could change them.
class PixelRow {
public:
    void write(const std::uint8_t* red, const std::uint8_t* green, const std::uint8_t* blue, unsigned char* target,
               int width) const {
        for (int x = 0; x < width; ++x) {
            const std::uint32_t pixel = std::uint32_t{red[x]} << red_shift_ | std::uint32_t{green[x]} << green_shift_ |
                                        std::uint32_t{blue[x]} << blue_shift_;
            std::memcpy(target + 4 * static_cast<std::size_t>(x), &pixel, sizeof pixel);
        }
    }

private:
    int red_shift_ = _rgb_r_shift_32, green_shift_ = _rgb_g_shift_32, blue_shift_ = _rgb_b_shift_32;
};

std::size_t line_size(const PictureHeader& header) {
    return planes * static_cast<std::size_t>(header.bytes_per_line);
}

} // namespace

std::size_t UnpackedPicture::size() const {
    return line_size(header) * static_cast<std::size_t>(header.height);
}

std::optional<UnpackedPicture> unpack_picture(std::span<const std::uint8_t> file) {
    UnpackedPicture picture{read_picture_header(file), nullptr};
    auto& [width, height, bits, plane, readable] = picture.header;
    if (!readable || bits != 24)
        return std::nullopt;
    const std::size_t length = line_size(picture.header), padded_plane = static_cast<std::size_t>(plane);
    std::vector<std::uint8_t> padded(plane > bytes_per_line_limit ? length + store : 0);
    if (!padded.empty())
        plane = width;
    picture.samples = std::make_unique_for_overwrite<std::uint8_t[]>(picture.size() + store);
    LineDecoder decoder(file.subspan(picture_header_size));
    for (std::uint8_t *line = picture.samples.get(), *end = line + picture.size(); line < end;
         line += line_size(picture.header)) {
        if (!decoder.read(padded.empty() ? line : padded.data(), length))
            return std::nullopt;
        for (std::size_t i = 0; i < (padded.empty() ? 0 : planes); ++i)
            std::copy_n(padded.data() + i * padded_plane, width, line + i * static_cast<std::size_t>(width));
    }
    return picture;
}

BitmapPtr make_bitmap(const UnpackedPicture& picture) {
    const auto& [header, samples] = picture;
    BitmapPtr bitmap(create_bitmap_ex(32, header.width, header.height));
    if (!bitmap)
        return nullptr;
    const PixelRow row;
    const auto plane = static_cast<std::size_t>(header.bytes_per_line);
    const std::uint8_t* line = samples.get();
    for (int y = 0; y < header.height; ++y, line += planes * plane)
        row.write(line, line + plane, line + 2 * plane, bitmap->line[y], header.width);
    if (get_color_depth() == 32)
        return bitmap;
    BitmapPtr converted(create_bitmap(header.width, header.height));
    if (converted)
        blit(bitmap.get(), converted.get(), 0, 0, 0, 0, header.width, header.height);
    return converted;
}

} // namespace vcc
