#include "vcckit/media/convert.h"

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

/// Those of all pixels; the mask colour for pixels that are not drawn.
std::vector<Colour> colours_of(const Image& image) {
    std::vector<Colour> colours;
    colours.reserve(image.rgba.size() / rgba_size);
    bool has_alpha = false;
    for (std::size_t at = 3; at < image.rgba.size(); at += rgba_size)
        has_alpha = has_alpha || image.rgba[at] < opaque;
    for (std::size_t at = 0; at + 3 < image.rgba.size(); at += rgba_size) {
        Colour colour{image.rgba[at], image.rgba[at + 1], image.rgba[at + 2]};
        // Without transparency, the mask colour is intended.
        if (image.rgba[at + 3] < opaque || (!has_alpha && colour == mask))
            colour = mask;
        else if (is_taken_for_mask(colour))
            colour[1] = 8;
        colours.push_back(colour);
    }
    return colours;
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

/// The number of each pixel's colour in a palette, which is filled in; that of the mask colour is 0.
std::vector<std::uint8_t> numbers_of(const std::vector<Colour>& colours, std::vector<Colour>& palette) {
    std::vector<Colour> drawn;
    std::ranges::remove_copy(colours, std::back_inserter(drawn), mask);
    const std::size_t first = drawn.size() < colours.size() ? 1 : 0;
    const PalettePicture picture = in_few_colours(drawn, palette_size - first);
    palette.assign(first, mask);
    palette.insert(palette.end(), picture.palette.begin(), picture.palette.end());
    palette.resize(palette_size);
    std::vector<std::uint8_t> numbers;
    numbers.reserve(colours.size());
    for (auto next = picture.pixels.begin(); const Colour& colour : colours)
        numbers.push_back(colour == mask ? std::uint8_t{0} : static_cast<std::uint8_t>(*next++ + first));
    return numbers;
}

std::string pcx_bytes(const Image& image, int bits) {
    const std::vector<Colour> colours = colours_of(image);
    std::vector<Colour> palette;
    std::vector<std::vector<std::uint8_t>> planes;
    if (bits == 8)
        planes.push_back(numbers_of(colours, palette));
    else
        for (std::size_t part = 0; part < std::size(mask); ++part)
            std::ranges::transform(colours, std::back_inserter(planes.emplace_back()),
                                   [part](const Colour& colour) { return colour[part]; });
    const auto width = static_cast<std::size_t>(image.width);
    std::vector<std::uint8_t> line((width + 1) / 2 * 2);
    std::string bytes = header_of(image, static_cast<int>(planes.size()), static_cast<int>(line.size()));
    for (std::size_t at = 0; at < colours.size(); at += width)
        for (const std::vector<std::uint8_t>& plane : planes) {
            std::copy_n(plane.data() + at, width, line.begin());
            add_line(bytes, line);
        }
    if (!palette.empty())
        bytes += '\x0C';
    for (const Colour& colour : palette)
        bytes.append(colour.begin(), colour.end());
    return bytes;
}

} // namespace

Result<std::string> convert_picture(const Media& media, NewFile& file, int bits) {
    const auto image = read_image(media);
    if (!image)
        return Failure{image.reason()};
    if (!file.write(pcx_bytes(*image, bits)))
        return Failure{file.reason()};
    return std::to_string(image->width) + " x " + std::to_string(image->height) + " pixels of " + std::to_string(bits) +
           " bits";
}

} // namespace vcc::kit
