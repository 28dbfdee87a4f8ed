#include "render.h"

#include <png.h>

#include <vector>

namespace vcc::kit {

bool write_png(BITMAP& picture, const std::string& path) {
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
    return png_image_write_to_file(&image, path.c_str(), 0, pixels.data(), 0, nullptr) != 0;
}

} // namespace vcc::kit
