#include "vcckit/draw/render.h"
#include "vcckit/draw/rgb_picture.h"

#include <png.h>

#include <cstdlib>

namespace vcc::kit {

RgbPicture rgb_of(BITMAP& bitmap) {
    RgbPicture picture{bitmap.w, bitmap.h, {}};
    const int depth = bitmap_color_depth(&bitmap);
    picture.rgb.resize(static_cast<std::size_t>(bitmap.w) * static_cast<std::size_t>(bitmap.h) * 3);
    std::uint8_t* part = picture.rgb.data();
    for (int y = 0; y < bitmap.h; ++y) {
        for (int x = 0; x < bitmap.w; ++x) {
            const int pixel = getpixel(&bitmap, x, y);
            *part++ = static_cast<std::uint8_t>(getr_depth(depth, pixel));
            *part++ = static_cast<std::uint8_t>(getg_depth(depth, pixel));
            *part++ = static_cast<std::uint8_t>(getb_depth(depth, pixel));
        }
    }
    return picture;
}

double share_alike(const RgbPicture& one, const RgbPicture& other) {
    constexpr int near = 10; // differences that 15 bits lose
    const auto is_near = [&](std::size_t at) { return std::abs(one.rgb[at] - other.rgb[at]) <= near; };
    if (one.width != other.width || one.height != other.height || one.rgb.empty())
        return 0;
    std::size_t alike = 0;
    for (std::size_t at = 0; at + 2 < one.rgb.size(); at += 3)
        alike += is_near(at) && is_near(at + 1) && is_near(at + 2) ? 1 : 0;
    return static_cast<double>(alike) * 3 / static_cast<double>(one.rgb.size());
}

std::string png_bytes(const RgbPicture& picture, bool quickly) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGB;
    image.flags = quickly ? PNG_IMAGE_FLAG_FAST : 0;
    std::string bytes;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    bytes.resize(size);
    if (png_image_write_to_memory(&image, bytes.data(), &size, 0, picture.rgb.data(), 0, nullptr) == 0)
        return {};
    bytes.resize(size);
    return bytes;
}

} // namespace vcc::kit
