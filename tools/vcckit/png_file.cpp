#include "render.h"

#include <png.h>

#include <vector>

namespace vcc::kit {

std::string png_bytes(BITMAP& picture) {
    constexpr std::size_t channels = 3;
    const auto width = static_cast<std::size_t>(picture.w), height = static_cast<std::size_t>(picture.h);
    const int depth = bitmap_color_depth(&picture);
    std::vector<png_byte> pixels;
    pixels.reserve(width * height * channels);
    for (int y = 0; y < picture.h; ++y) {
        for (int x = 0; x < picture.w; ++x) {
            const int pixel = getpixel(&picture, x, y);
            for (const int part : {getr_depth(depth, pixel), getg_depth(depth, pixel), getb_depth(depth, pixel)})
                pixels.push_back(static_cast<png_byte>(part));
        }
    }
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = PNG_FORMAT_RGB;
    std::string bytes;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    bytes.resize(size);
    if (png_image_write_to_memory(&image, bytes.data(), &size, 0, pixels.data(), 0, nullptr) == 0)
        return {};
    bytes.resize(size);
    return bytes;
}

} // namespace vcc::kit
