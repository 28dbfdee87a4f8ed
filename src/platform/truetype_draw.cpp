#include "platform/truetype_draw.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace vcc::platform {
namespace {

struct Area {
    int x1, y1, x2, y2; // the last two are outside
};

Area drawable(const BITMAP* target) {
    if (!target->clip)
        return {0, 0, target->w, target->h};
    return {std::max(target->cl, 0), std::max(target->ct, 0), std::min(target->cr, target->w),
            std::min(target->cb, target->h)};
}

// Bytes of a pixel in memory, and how pixels of the depth are mixed.
struct Depth32 {
    static constexpr int bytes = 4;
    static constexpr auto mix = mix_32;
};
struct Depth24 {
    static constexpr int bytes = 3;
    static constexpr auto mix = mix_32;
};
struct Depth16 {
    static constexpr int bytes = 2;
    static constexpr auto mix = mix_16;
};
struct Depth15 {
    static constexpr int bytes = 2;
    static constexpr auto mix = mix_15;
};

template <class Depth>
void mix_row(unsigned char* pixels, const std::uint8_t* coverage, int count, std::uint32_t ink) {
    for (int i = 0; i < count; ++i, pixels += Depth::bytes) {
        if (coverage[i] == 0)
            continue;
        std::uint32_t pixel = ink;
        if (coverage[i] != 255) {
            pixel = 0;
            std::memcpy(&pixel, pixels, Depth::bytes);
            pixel = Depth::mix(pixel, ink, coverage[i]);
        }
        std::memcpy(pixels, &pixel, Depth::bytes);
    }
}

void solid_row(unsigned char* pixels, const std::uint8_t* coverage, int count, std::uint32_t ink) {
    for (int i = 0; i < count; ++i)
        if (coverage[i] >= 128)
            pixels[i] = static_cast<unsigned char>(ink);
}

using RowWriter = void (*)(unsigned char*, const std::uint8_t*, int, std::uint32_t);

struct DepthRow {
    int depth;
    int bytes;
    RowWriter write;
    std::uint32_t (*mix)(std::uint32_t, std::uint32_t, std::uint32_t);
};
constexpr DepthRow depth_rows[] = {
    {32, 4, mix_row<Depth32>, mix_32}, {24, 3, mix_row<Depth24>, mix_32}, {16, 2, mix_row<Depth16>, mix_16},
    {15, 2, mix_row<Depth15>, mix_15}, {8, 1, solid_row, nullptr},
};

// The display's own memory is reached through the library only.
void draw_through_library(BITMAP* target, const GlyphPicture& glyph, const Area& part, int left, int top, int colour,
                          const DepthRow& depth) {
    for (int y = part.y1; y < part.y2; ++y)
        for (int x = part.x1; x < part.x2; ++x) {
            const std::uint8_t coverage = glyph.coverage[static_cast<std::size_t>((y - top) * glyph.width + x - left)];
            if (coverage == 255 || (!depth.mix && coverage >= 128))
                putpixel(target, x, y, colour);
            else if (depth.mix && coverage != 0)
                putpixel(target, x, y,
                         static_cast<int>(depth.mix(static_cast<std::uint32_t>(getpixel(target, x, y)),
                                                    static_cast<std::uint32_t>(colour), coverage)));
        }
}

} // namespace

void draw_glyph(BITMAP* target, const GlyphPicture& glyph, int x, int y, int colour) {
    const int left = x + glyph.left, top = y + glyph.top;
    const Area area = drawable(target);
    const Area part{std::max(area.x1, left), std::max(area.y1, top), std::min(area.x2, left + glyph.width),
                    std::min(area.y2, top + glyph.height)};
    if (part.x1 >= part.x2 || part.y1 >= part.y2)
        return;
    const auto depth =
        std::ranges::find(depth_rows, bitmap_color_depth(target), [](const DepthRow& row) { return row.depth; });
    if (depth == std::end(depth_rows))
        return;
    if (!is_memory_bitmap(target)) {
        draw_through_library(target, glyph, part, left, top, colour, *depth);
        return;
    }
    for (int row = part.y1; row < part.y2; ++row)
        depth->write(target->line[row] + std::ptrdiff_t{part.x1} * depth->bytes,
                     glyph.coverage.data() + std::ptrdiff_t{row - top} * glyph.width + (part.x1 - left),
                     part.x2 - part.x1, static_cast<std::uint32_t>(colour));
}

} // namespace vcc::platform
