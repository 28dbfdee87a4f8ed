#include "vcckit/media/convert.h"

#include "core/files.h"
#include "display/picture.h"

#include <png.h>

#include <algorithm>
#include <memory>
#include <string_view>

namespace vcc::kit {

namespace {

constexpr std::size_t rgba_channels = 4;

Image empty_image(int width, int height) {
    return {
        width, height,
        std::vector<std::uint8_t>(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * rgba_channels)};
}

constexpr const char* damaged = "is damaged or truncated";

/// Why the program does not take a picture of this size; empty if it does.
std::string fault_of_size(std::int64_t width, std::int64_t height) {
    if (width >= 1 && width <= picture_limit && height >= 1 && height <= picture_limit)
        return {};
    return "has " + std::to_string(width) + " x " + std::to_string(height) + " pixels, and the program takes at most " +
           std::to_string(picture_limit) + " a side";
}

Result<Image> read_png(std::string_view bytes) {
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    const std::unique_ptr<png_image, decltype(&png_image_free)> owned(&png, png_image_free);
    if (png_image_begin_read_from_memory(&png, bytes.data(), bytes.size()) == 0)
        return Failure{damaged};
    if (std::string fault = fault_of_size(png.width, png.height); !fault.empty())
        return Failure{std::move(fault)};
    png.format = PNG_FORMAT_RGBA;
    Image image = empty_image(static_cast<int>(png.width), static_cast<int>(png.height));
    if (png_image_finish_read(&png, nullptr, image.rgba.data(), 0, nullptr) == 0)
        return Failure{damaged};
    return image;
}

/// A PCX picture with an alpha plane, which no other reader here supports.
Result<Image> read_pcx_of_four_planes(std::string_view file) {
    constexpr std::uint8_t run_mark = 0xC0;
    const std::span bytes(reinterpret_cast<const std::uint8_t*>(file.data()), file.size());
    const PictureHeader header = read_picture_header(bytes);
    if (std::string fault = fault_of_size(header.width, header.height); !fault.empty())
        return Failure{std::move(fault)};
    Image image = empty_image(header.width, header.height);
    const auto width = static_cast<std::size_t>(header.width), plane = static_cast<std::size_t>(header.bytes_per_line);
    std::vector<std::uint8_t> line; // red, green, blue and opacity of all its pixels, and what a run has more
    std::size_t at = picture_header_size;
    for (std::size_t y = 0; y < static_cast<std::size_t>(header.height); ++y) {
        for (; line.size() < rgba_channels * plane; ++at) {
            const bool repeated = at < bytes.size() && bytes[at] >= run_mark;
            const int run = repeated ? bytes[at++] & ~run_mark : 1;
            if (at >= bytes.size() || run == 0)
                return Failure{damaged};
            line.insert(line.end(), static_cast<std::size_t>(run), bytes[at]);
        }
        for (std::size_t i = 0; i < std::min(width, plane) * rgba_channels; ++i)
            image.rgba[y * width * rgba_channels + i] = line[i % rgba_channels * plane + i / rgba_channels];
        line.erase(line.begin(), line.begin() + static_cast<std::ptrdiff_t>(rgba_channels * plane));
    }
    return image;
}

/// By way of a PNG picture, turned as its Exif data say.
Result<Image> read_by_ffmpeg(const Media& media) {
    if (media.pictures < 0)
        return Failure{"has no picture"};
    std::string fault = media.width > 0 ? fault_of_size(media.width, media.height) : "";
    if (!fault.empty()) // known before all of it is decoded
        return Failure{std::move(fault)};
    std::string png;
    fault = run_ffmpeg(media, media.pictures,
                       "-vf scale=flags=bicubic+accurate_rnd+full_chroma_int,format=rgba -frames:v 1 -c:v png "
                       "-compression_level 0 -f image2pipe",
                       "pipe:1", false, [&](std::string_view piece) {
                           png += piece;
                           return true;
                       });
    if (fault.empty() && png.empty())
        fault = "has no picture";
    return fault.empty() ? read_png(png) : Failure{std::move(fault)};
}

} // namespace

Result<Image> read_image(const Media& media) {
    const std::string bytes = read_file(media.path, picture_file_limit * 2).value_or({});
    if (bytes.starts_with("\x89PNG"))
        return read_png(bytes);
    constexpr std::size_t bits_place = 3, planes_place = 65;
    if (bytes.size() > picture_header_size && bytes.front() == 10 && bytes[bits_place] == 8 &&
        bytes[planes_place] == static_cast<char>(rgba_channels))
        return read_pcx_of_four_planes(bytes);
    return read_by_ffmpeg(media);
}

} // namespace vcc::kit
