#include "display/picture_rows.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace vcc {

namespace {

constexpr std::size_t planes = 3;
constexpr std::uint8_t run_mark = 0xC0; ///< of a byte whose other bits are the length of a run of the next byte

/// Reads one line of a picture: red, green and blue bytes one after the other. A run may not leave the line: what is
/// too long is dropped. False at the end of the data.
class LineDecoder {
public:
    explicit LineDecoder(std::span<const std::uint8_t> data) : at_(data.data()), end_(at_ + data.size()) {}

    bool read(std::span<std::uint8_t> line) {
        std::uint8_t* target = line.data();
        std::uint8_t* const line_end = target + line.size();
        while (target < line_end) {
            if (at_ == end_)
                return false;
            const std::uint8_t byte = *at_++;
            if (byte < run_mark) {
                *target++ = byte;
                continue;
            }
            if (at_ == end_)
                return false;
            const std::uint8_t value = *at_++;
            const int length = byte - run_mark;
            if (length == 1) { // by far the most: a bright byte that stands alone
                *target++ = value;
                continue;
            }
            const auto fitting = std::min<std::ptrdiff_t>(length, line_end - target);
            std::memset(target, value, static_cast<std::size_t>(fitting));
            target += fitting;
        }
        return true;
    }

private:
    const std::uint8_t* at_;
    const std::uint8_t* end_;
};

/// The shifts are read once: to the compiler, every pixel written might be one of them.
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

} // namespace

BitmapPtr decode_true_colour(std::span<const std::uint8_t> file) {
    const PictureHeader header = read_picture_header(file);
    if (!header.sound || header.bits != 24)
        return nullptr;
    BitmapPtr picture(create_bitmap_ex(32, header.width, header.height));
    if (!picture)
        return nullptr;
    const auto plane = static_cast<std::size_t>(header.bytes_per_line);
    std::vector<std::uint8_t> line(planes * plane);
    LineDecoder decoder(file.subspan(picture_header_size));
    const PixelRow row;
    for (int y = 0; y < header.height; ++y) {
        if (!decoder.read(line))
            return nullptr;
        row.write(line.data(), line.data() + plane, line.data() + 2 * plane, picture->line[y], header.width);
    }
    return picture;
}

} // namespace vcc
