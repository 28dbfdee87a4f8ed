#include "media/truetype_draw.h"

#include "platform/area.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace vcc::platform {
namespace {

/// Mixes `ink` into `paper` by coverage / 255 in each field of the masks, whatever the order of the colours.
template <std::uint32_t... field_masks>
constexpr std::uint32_t mix_fields(std::uint32_t paper, std::uint32_t ink, std::uint32_t coverage) {
    const auto mix = [&](std::uint64_t mask) {
        const std::uint64_t unit = mask & (~mask + 1); // the lowest bit of the field
        const std::uint64_t from = (paper & mask) / unit, to = (ink & mask) / unit;
        return static_cast<std::uint32_t>((from * (255 - coverage) + to * coverage + 127) / 255 * unit);
    };
    return (mix(field_masks) | ...);
}
constexpr std::uint32_t mix_32(std::uint32_t paper, std::uint32_t ink, std::uint32_t coverage) {
    return mix_fields<0xFF, 0xFF00, 0xFF0000>(paper, ink, coverage);
}
constexpr std::uint32_t mix_16(std::uint32_t paper, std::uint32_t ink, std::uint32_t coverage) {
    return mix_fields<0x1F, 0x7E0, 0xF800>(paper, ink, coverage);
}
constexpr std::uint32_t mix_15(std::uint32_t paper, std::uint32_t ink, std::uint32_t coverage) {
    return mix_fields<0x1F, 0x3E0, 0x7C00>(paper, ink, coverage);
}

Area drawable(const BITMAP* target) {
    if (!target->clip)
        return {0, 0, target->w, target->h};
    return {std::max(target->cl, 0), std::max(target->ct, 0), std::min(target->cr, target->w),
            std::min(target->cb, target->h)};
}

using Mix = std::uint32_t (*)(std::uint32_t paper, std::uint32_t ink, std::uint32_t coverage);

template <int bytes, Mix mix>
void mix_row(unsigned char* pixels, const std::uint8_t* coverage, int count, std::uint32_t ink) {
    for (int i = 0; i < count; ++i, pixels += bytes) {
        if (coverage[i] == 0)
            continue;
        std::uint32_t pixel = ink;
        if (coverage[i] != 255) {
            pixel = 0;
            std::memcpy(&pixel, pixels, bytes);
            pixel = mix(pixel, ink, coverage[i]);
        }
        std::memcpy(pixels, &pixel, bytes);
    }
}

void solid_row(unsigned char* pixels, const std::uint8_t* coverage, int count, std::uint32_t ink) {
    for (int i = 0; i < count; ++i)
        if (coverage[i] >= 128)
            pixels[i] = static_cast<unsigned char>(ink);
}

struct DepthRow {
    int depth;
    int bytes; ///< of a pixel in memory
    void (*write)(unsigned char* pixels, const std::uint8_t* coverage, int count, std::uint32_t ink);
    Mix mix;
};
constexpr DepthRow depth_rows[] = {
    {32, 4, mix_row<4, mix_32>, mix_32}, {24, 3, mix_row<3, mix_32>, mix_32}, {16, 2, mix_row<2, mix_16>, mix_16},
    {15, 2, mix_row<2, mix_15>, mix_15}, {8, 1, solid_row, nullptr},
};

// The display's own memory can only be reached through the library.
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
    const Area part = shared(drawable(target), {left, top, left + glyph.width, top + glyph.height});
    const auto depth = std::ranges::find(depth_rows, bitmap_color_depth(target), &DepthRow::depth);
    if (part.empty() || depth == std::end(depth_rows))
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
