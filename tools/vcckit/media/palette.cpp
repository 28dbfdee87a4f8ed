#include "vcckit/media/palette.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <numeric>

namespace vcc::kit {

namespace {

constexpr std::size_t rgb18_count = std::size_t{1} << 18;

/// From 6 bits per component to 8.
std::uint8_t widened(std::uint32_t part) {
    return static_cast<std::uint8_t>(part << 2 | part >> 4);
}

std::uint32_t rgb18_of(const Colour& colour) {
    return static_cast<std::uint32_t>(colour[0] >> 2 << 12 | colour[1] >> 2 << 6 | colour[2] >> 2);
}

Colour colour_of(std::uint32_t colour) {
    return {widened(colour >> 12), widened(colour >> 6 & 63), widened(colour & 63)};
}

struct Counted {
    std::uint32_t colour;
    std::uint64_t pixels;
    std::uint32_t part(int shift) const { return colour >> shift & 63; }
};
using Colours = std::span<Counted>;

struct Box {
    Colours colours;
    int shift = 0;           ///< of the component that varies most
    std::uint64_t worth = 0; ///< gain of a cut
};

std::uint64_t pixels_of(Colours colours) {
    std::uint64_t pixels = 0;
    for (const Counted& each : colours)
        pixels += each.pixels;
    return pixels;
}

Box box_of(Colours colours) {
    Box box{colours};
    for (const int shift : {12, 6, 0}) {
        const auto [low, high] =
            std::ranges::minmax(colours, {}, [&](const Counted& each) { return each.part(shift); });
        const std::uint64_t worth = std::uint64_t{high.part(shift) - low.part(shift)} * pixels_of(colours);
        if (worth > box.worth)
            box = {colours, shift, worth};
    }
    return box;
}

/// The position with half of the pixels on each side; never an end.
std::size_t middle_of(Colours colours) {
    const std::uint64_t all = pixels_of(colours);
    std::uint64_t before = 0;
    std::size_t at = 0;
    while (at + 2 < colours.size() && 2 * (before + colours[at].pixels) < all)
        before += colours[at++].pixels;
    return at + 1;
}

Colour mean_of(Colours colours) {
    std::array<std::uint64_t, 3> sums{};
    for (const Counted& each : colours)
        for (std::size_t part = 0; part < sums.size(); ++part)
            sums[part] += each.part(12 - 6 * static_cast<int>(part)) * each.pixels;
    const std::uint64_t pixels = pixels_of(colours);
    Colour mean{};
    for (std::size_t part = 0; part < sums.size(); ++part)
        mean[part] = widened(static_cast<std::uint32_t>((sums[part] + pixels / 2) / pixels));
    return mean;
}

std::vector<Box> median_cut(Colours colours, std::size_t most) {
    std::vector<Box> boxes{box_of(colours)};
    while (boxes.size() < most) {
        const auto widest = std::ranges::max_element(boxes, {}, &Box::worth);
        const Colours cut = widest->colours;
        std::ranges::sort(cut, {}, [&](const Counted& each) { return each.part(widest->shift); });
        const std::size_t middle = middle_of(cut);
        *widest = box_of(cut.first(middle));
        boxes.push_back(box_of(cut.subspan(middle)));
    }
    return boxes;
}

std::uint8_t nearest_in(const std::vector<Colour>& palette, const Colour& colour) {
    const auto nearest = std::ranges::min_element(palette, {}, [&](const Colour& each) {
        return std::inner_product(each.begin(), each.end(), colour.begin(), 0, std::plus(),
                                  [](int a, int b) { return (a - b) * (a - b); });
    });
    return static_cast<std::uint8_t>(nearest - palette.begin());
}

} // namespace

PalettePicture in_few_colours(std::span<const Colour> pixels, std::size_t most) {
    std::vector<std::uint64_t> counts(rgb18_count);
    for (const Colour& pixel : pixels)
        ++counts[rgb18_of(pixel)];
    std::vector<Counted> colours;
    for (std::uint32_t colour = 0; colour < rgb18_count; ++colour)
        if (counts[colour] > 0)
            colours.push_back({colour, counts[colour]});
    PalettePicture picture;
    if (colours.size() <= most)
        std::ranges::transform(colours, std::back_inserter(picture.palette), colour_of, &Counted::colour);
    else
        std::ranges::transform(median_cut(colours, most), std::back_inserter(picture.palette), mean_of, &Box::colours);
    std::vector<std::uint8_t> nearest(rgb18_count);
    for (const Counted& each : colours)
        nearest[each.colour] = nearest_in(picture.palette, colour_of(each.colour));
    std::ranges::transform(pixels, std::back_inserter(picture.pixels),
                           [&](const Colour& pixel) { return nearest[rgb18_of(pixel)]; });
    return picture;
}

} // namespace vcc::kit
