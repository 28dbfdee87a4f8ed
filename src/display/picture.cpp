#include "display/picture.h"

#include "platform/files.h"

#include <array>
#include <cstdio>

namespace vcc {

namespace {

constexpr std::uint8_t pcx_manufacturer = 10;

int word_at(std::span<const std::uint8_t> bytes, std::size_t offset) {
    return bytes[offset] | bytes[offset + 1] << 8;
}

} // namespace

PictureHeader read_picture_header(std::span<const std::uint8_t> bytes) {
    PictureHeader header;
    if (bytes.size() < picture_header_size || bytes[0] != pcx_manufacturer)
        return header;
    const int bits_per_plane = bytes[3], planes = bytes[65], bytes_per_line = word_at(bytes, 66);
    header.width = word_at(bytes, 8) - word_at(bytes, 4) + 1;
    header.height = word_at(bytes, 10) - word_at(bytes, 6) + 1;
    header.bits = bits_per_plane * planes;
    const auto fits = [](int side) { return side >= 1 && side <= picture_limit; };
    header.sound = bits_per_plane == 8 && (planes == 1 || planes == 3) && fits(header.width) && fits(header.height) &&
                   bytes_per_line >= header.width;
    return header;
}

BitmapPtr load_picture(std::string_view path, PALETTE* palette) {
    // The library's reader believes any size that the header names, so the header is looked at first.
    const std::string name = platform::resolve_path(path);
    std::array<std::uint8_t, picture_header_size> bytes{};
    const FilePtr file(std::fopen(name.c_str(), "rb"));
    if (!file || std::fread(bytes.data(), 1, bytes.size(), file.get()) != bytes.size())
        return nullptr;
    if (!read_picture_header(bytes).sound)
        return nullptr;
    return BitmapPtr(load_pcx(name.c_str(), palette ? *palette : nullptr));
}

} // namespace vcc
