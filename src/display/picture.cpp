#include "display/picture.h"

#include "core/files.h"
#include "core/log.h"
#include "display/pictures_ahead.h"
#include "platform/files.h"

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
    const int bits_per_plane = bytes[3], planes = bytes[65];
    header.bytes_per_line = word_at(bytes, 66);
    header.width = word_at(bytes, 8) - word_at(bytes, 4) + 1;
    header.height = word_at(bytes, 10) - word_at(bytes, 6) + 1;
    header.bits = bits_per_plane * planes;
    const auto fits = [](int side) { return side >= 1 && side <= picture_limit; };
    header.readable = bits_per_plane == 8 && (planes == 1 || planes == 3) && fits(header.width) &&
                      fits(header.height) && header.bytes_per_line >= header.width;
    return header;
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
        if (!picture && header.bits == 24) // the library shows as much as there is
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
