#include "read_image.h"

#include "core/files.h"
#include "display/picture.h"
#include "platform/files.h"

#include <png.h>

#include <fstream>
#include <memory>
#include <string_view>

namespace vcc::kit {

namespace {

constexpr std::size_t channels = 4;

std::size_t pixel_count(int width, int height) {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

bool fits(std::int64_t width, std::int64_t height, std::string& fault) {
    if (width >= 1 && width <= picture_limit && height >= 1 && height <= picture_limit)
        return true;
    fault = "has " + std::to_string(width) + " x " + std::to_string(height) +
            " pixels, and the program takes at most " + std::to_string(picture_limit) + " a side";
    return false;
}

std::string first_bytes(const std::string& path) {
    std::string bytes(picture_header_size, '\0');
    std::ifstream file(platform::system_path(path), std::ios::binary);
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return bytes;
}

std::optional<Image> read_png(const std::string& path, std::string& fault) {
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    const std::unique_ptr<png_image, decltype(&png_image_free)> owned(&png, png_image_free);
    if (png_image_begin_read_from_file(&png, path.c_str()) == 0) {
        fault = "is damaged or truncated";
        return std::nullopt;
    }
    if (!fits(png.width, png.height, fault))
        return std::nullopt;
    png.format = PNG_FORMAT_RGBA;
    Image image{static_cast<int>(png.width), static_cast<int>(png.height), {}};
    image.rgba.resize(pixel_count(image.width, image.height) * channels);
    if (png_image_finish_read(&png, nullptr, image.rgba.data(), 0, nullptr) != 0)
        return image;
    fault = "is damaged or truncated";
    return std::nullopt;
}

/// A PCX picture with an alpha plane, which no other reader here supports.
std::optional<Image> read_pcx_of_four_planes(const std::string& path, std::string& fault) {
    constexpr std::uint8_t run_mark = 0xC0;
    const auto file = read_file(path, picture_file_limit * channels);
    if (!file) {
        fault = "cannot be read";
        return std::nullopt;
    }
    const std::span bytes(reinterpret_cast<const std::uint8_t*>(file->data()), file->size());
    const PictureHeader header = read_picture_header(bytes);
    if (!fits(header.width, header.height, fault))
        return std::nullopt;
    Image image{header.width, header.height, {}};
    image.rgba.resize(pixel_count(image.width, image.height) * channels);
    const auto width = static_cast<std::size_t>(header.width);
    std::size_t at = picture_header_size;
    int run = 0;
    std::uint8_t value = 0;
    for (std::size_t y = 0; y < static_cast<std::size_t>(header.height); ++y) {
        for (std::size_t plane = 0; plane < channels; ++plane) {
            for (std::size_t x = 0; x < static_cast<std::size_t>(header.bytes_per_line); ++x) {
                if (run == 0) {
                    const bool repeated = at < bytes.size() && bytes[at] >= run_mark;
                    run = repeated ? bytes[at++] & ~run_mark : 1;
                    if (at >= bytes.size() || run == 0) {
                        fault = "is damaged or truncated";
                        return std::nullopt;
                    }
                    value = bytes[at++];
                }
                --run;
                if (x < width)
                    image.rgba[(y * width + x) * channels + plane] = value;
            }
        }
    }
    return image;
}

std::optional<Image> read_by_ffmpeg(const std::string& path, std::string& fault) {
    const auto media = Media::open(path, fault);
    if (!media || !media->choose(AVMEDIA_TYPE_VIDEO, fault))
        return std::nullopt;
    const AVFrame* const frame = media->next_frame();
    if (frame == nullptr) {
        fault = media->fault().empty() ? "has no picture" : media->fault();
        return std::nullopt;
    }
    if (!fits(frame->width, frame->height, fault))
        return std::nullopt;
    const MediaFunctions& ffmpeg = *media_functions();
    const std::unique_ptr<SwsContext, MediaDeleter> scaler(ffmpeg.sws_getCachedContext(
        nullptr, frame->width, frame->height, static_cast<AVPixelFormat>(frame->format), frame->width, frame->height,
        AV_PIX_FMT_RGBA, SWS_BICUBIC | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT, nullptr, nullptr, nullptr));
    Image image{frame->width, frame->height, {}};
    const std::size_t size = pixel_count(image.width, image.height) * channels;
    constexpr std::size_t overrun = 64; // the scaler may write past the last line
    image.rgba.resize(size + overrun);
    std::uint8_t* const planes[4] = {image.rgba.data(), nullptr, nullptr, nullptr};
    const int strides[4] = {image.width * static_cast<int>(channels), 0, 0, 0};
    if (scaler && ffmpeg.sws_scale(scaler.get(), frame->data, frame->linesize, 0, frame->height, planes, strides) > 0) {
        image.rgba.resize(size);
        return image;
    }
    fault = "has pixels of a kind that cannot be converted";
    return std::nullopt;
}

} // namespace

std::optional<Image> read_image(const std::string& path, std::string& fault) {
    const std::string beginning = first_bytes(path);
    if (beginning.starts_with("\x89PNG"))
        return read_png(path, fault);
    constexpr std::size_t bits_place = 3, planes_place = 65;
    if (beginning.size() == picture_header_size && beginning.front() == 10 && beginning[bits_place] == 8 &&
        beginning[planes_place] == static_cast<char>(channels))
        return read_pcx_of_four_planes(path, fault);
    return read_by_ffmpeg(path, fault);
}

} // namespace vcc::kit
