#include "vcckit/media/palette.h"

#include <algorithm>
#include <limits>

namespace vcc::kit {

namespace {

constexpr std::size_t rgb18_count = std::size_t{1} << 18;

/// From 6 bits per component to 8.
std::uint8_t widened(std::uint32_t part) {
    return static_cast<std::uint8_t>(part << 2 | part >> 4);
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

Box box_of(Colours colours) {
    Box box{colours};
    std::uint64_t pixels = 0;
    for (const Counted& each : colours)
        pixels += each.pixels;
    for (const int shift : {12, 6, 0}) {
        const auto [low, high] =
            std::ranges::minmax(colours, {}, [&](const Counted& each) { return each.part(shift); });
        const std::uint64_t worth = std::uint64_t{high.part(shift) - low.part(shift)} * pixels;
        if (worth > box.worth)
            box = {colours, shift, worth};
    }
    return box;
}

/// The position with half of the pixels on each side; never an end.
std::size_t middle_of(Colours colours) {
    std::uint64_t all = 0, before = 0;
    for (const Counted& each : colours)
        all += each.pixels;
    std::size_t at = 0;
    while (at + 2 < colours.size() && 2 * (before + colours[at].pixels) < all)
        before += colours[at++].pixels;
    return at + 1;
}

Colour mean_of(Colours colours) {
    std::array<std::uint64_t, 3> sums{};
    std::uint64_t pixels = 0;
    for (const Counted& each : colours) {
        pixels += each.pixels;
        for (std::size_t part = 0; part < sums.size(); ++part)
            sums[part] += each.part(12 - 6 * static_cast<int>(part)) * each.pixels;
    }
    Colour mean{};
    for (std::size_t part = 0; part < sums.size(); ++part)
        mean[part] = widened(static_cast<std::uint32_t>((sums[part] + pixels / 2) / pixels));
    return mean;
}

} // namespace

std::uint32_t palette_colour(const Colour& colour) {
    return static_cast<std::uint32_t>(colour[0] >> 2 << 12 | colour[1] >> 2 << 6 | colour[2] >> 2);
}

std::vector<Colour> best_palette(std::span<const Colour> pixels, std::size_t most) {
    std::vector<std::uint64_t> counts(rgb18_count);
    for (const Colour& pixel : pixels)
        ++counts[palette_colour(pixel)];
    std::vector<Counted> colours;
    for (std::uint32_t colour = 0; colour < rgb18_count; ++colour)
        if (counts[colour] > 0)
            colours.push_back({colour, counts[colour]});
    std::vector<Colour> palette;
    if (colours.size() <= most) {
        for (const Counted& each : colours)
            palette.push_back(colour_of(each.colour));
        return palette;
    }
    std::vector<Box> boxes{box_of(colours)};
    while (boxes.size() < most) {
        const auto widest = std::ranges::max_element(boxes, {}, &Box::worth);
        const Colours cut = widest->colours;
        std::ranges::sort(cut, {}, [&](const Counted& each) { return each.part(widest->shift); });
        const std::size_t middle = middle_of(cut);
        *widest = box_of(cut.first(middle));
        boxes.push_back(box_of(cut.subspan(middle)));
    }
    for (const Box& box : boxes)
        palette.push_back(mean_of(box.colours));
    return palette;
}

std::vector<std::uint8_t> nearest_colours(std::span<const Colour> pixels, std::span<const Colour> palette) {
    std::vector<bool> wanted(rgb18_count);
    for (const Colour& pixel : pixels)
        wanted[palette_colour(pixel)] = true;
    std::vector<std::uint8_t> nearest(rgb18_count);
    for (std::uint32_t colour = 0; colour < rgb18_count; ++colour) {
        if (!wanted[colour])
            continue;
        int best = std::numeric_limits<int>::max();
        for (std::size_t i = 0; i < palette.size(); ++i) {
            int distance = 0;
            for (std::size_t part = 0; part < palette[i].size(); ++part) {
                const int step = colour_of(colour)[part] - palette[i][part];
                distance += step * step;
            }
            if (distance < best) {
                best = distance;
                nearest[colour] = static_cast<std::uint8_t>(i);
            }
        }
    }
    return nearest;
}

} // namespace vcc::kit
