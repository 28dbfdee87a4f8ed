#include "vcckit/media/convert.h"

#include "vcckit/files/new_file.h"
#include "vcckit/media/palette.h"

#include "display/picture.h"

#include <algorithm>
#include <span>

namespace vcc::kit {

namespace {

constexpr Colour mask{255, 0, 255};
constexpr int opaque = 128; ///< and above
constexpr std::size_t rgba_size = 4, palette_size = 256;

/// A colour that 15 or 16 bits, or a palette, would turn into the mask colour.
bool is_taken_for_mask(const Colour& colour) {
    return colour[0] >= 248 && colour[1] < 8 && colour[2] >= 248;
}

struct Pixels {
    std::vector<Colour> colours; ///< the mask colour for pixels that are not drawn
    bool masked = false;         ///< there are such pixels
};

Pixels pixels_of(const Image& image) {
    Pixels pixels;
    pixels.colours.reserve(image.rgba.size() / rgba_size);
    bool has_alpha = false;
    for (std::size_t at = 3; at < image.rgba.size(); at += rgba_size)
        has_alpha = has_alpha || image.rgba[at] < opaque;
    for (std::size_t at = 0; at + 3 < image.rgba.size(); at += rgba_size) {
        Colour colour{image.rgba[at], image.rgba[at + 1], image.rgba[at + 2]};
        // Without transparency, the mask colour is intended.
        const bool clear = image.rgba[at + 3] < opaque || (!has_alpha && colour == mask);
        if (clear)
            colour = mask;
        else if (is_taken_for_mask(colour))
            colour[1] = 8;
        pixels.masked = pixels.masked || clear;
        pixels.colours.push_back(colour);
    }
    return pixels;
}

void add_word(std::string& bytes, int word) {
    bytes += static_cast<char>(word & 0xFF);
    bytes += static_cast<char>(word >> 8);
}

std::string header_of(const Image& image, int planes, int bytes_per_line) {
    std::string bytes{10, 5, 1, 8}; // PCX, version with palette, run-length coding, bits per sample
    for (const int edge : {0, 0, image.width - 1, image.height - 1, 72, 72})
        add_word(bytes, edge);
    bytes.resize(65); // a palette of 16 colours, which is not used
    bytes += static_cast<char>(planes);
    add_word(bytes, bytes_per_line);
    add_word(bytes, 1); // colours, not greys
    bytes.resize(picture_header_size);
    return bytes;
}

/// Run-length codes a line; runs have at most 63 bytes.
void add_line(std::string& bytes, std::span<const std::uint8_t> line) {
    constexpr std::uint8_t run_mark = 0xC0;
    constexpr std::size_t longest_run = 63;
    for (std::size_t at = 0; at < line.size();) {
        std::size_t run = 1;
        while (run < longest_run && at + run < line.size() && line[at + run] == line[at])
            ++run;
        if (run > 1 || line[at] >= run_mark)
            bytes += static_cast<char>(run_mark | run);
        bytes += static_cast<char>(line[at]);
        at += run;
    }
}

void add_palette_picture(std::string& bytes, const Pixels& pixels, std::size_t width, std::size_t line_size) {
    std::vector<Colour> drawn;
    std::ranges::copy_if(pixels.colours, std::back_inserter(drawn), [](const Colour& each) { return each != mask; });
    const std::size_t first = pixels.masked ? 1 : 0;
    auto [palette, numbers] = in_few_colours(drawn, palette_size - first);
    auto number = numbers.begin();
    std::vector<std::uint8_t> line(line_size);
    for (std::size_t at = 0; at < pixels.colours.size(); at += width) {
        for (std::size_t x = 0; x < width; ++x)
            line[x] = pixels.colours[at + x] == mask ? std::uint8_t{0} : static_cast<std::uint8_t>(*number++ + first);
        add_line(bytes, line);
    }
    if (pixels.masked)
        palette.insert(palette.begin(), mask);
    palette.resize(palette_size);
    bytes += '\x0C';
    for (const Colour& colour : palette)
        bytes.append(colour.begin(), colour.end());
}

std::string pcx_bytes(const Image& image, int bits) {
    const Pixels pixels = pixels_of(image);
    const auto width = static_cast<std::size_t>(image.width);
    const std::size_t line_size = (width + 1) / 2 * 2;
    const int planes = bits / 8;
    std::string bytes = header_of(image, planes, static_cast<int>(line_size));
    if (planes == 1) {
        add_palette_picture(bytes, pixels, width, line_size);
        return bytes;
    }
    std::vector<std::uint8_t> line(line_size);
    for (std::size_t at = 0; at < pixels.colours.size(); at += width) {
        for (std::size_t plane = 0; plane < static_cast<std::size_t>(planes); ++plane) {
            for (std::size_t x = 0; x < width; ++x)
                line[x] = pixels.colours[at + x][plane];
            add_line(bytes, line);
        }
    }
    return bytes;
}

} // namespace

Conversion convert_picture(const Media& media, const std::string& target, int bits) {
    const auto image = read_image(media);
    if (!image)
        return {image.reason()};
    Conversion done;
    const std::string bytes = pcx_bytes(*image, bits);
    NewFile file(target);
    if (!file.write(bytes) || interrupted() || !file.commit())
        done.fault = file.reason();
    done.what = std::to_string(image->width) + " x " + std::to_string(image->height) + " pixels of " +
                std::to_string(bits) + " bits";
    return done;
}

} // namespace vcc::kit
