#include "media/truetype.h"

#include "platform/area.h"
#include "platform/files.h"
#include "platform/latin1.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_ADVANCES_H

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <numeric>

namespace vcc::platform {
namespace {

// Hard edges need outlines hinted in both directions. Smoothed ones are hinted vertically only, which keeps the shapes
// and sharp horizontal strokes.
constexpr int hard_edges = FT_LOAD_TARGET_MONO | FT_LOAD_RENDER, smooth_edges = FT_LOAD_TARGET_LIGHT | FT_LOAD_RENDER;

FT_Library renderer = nullptr;

// Removes the row with the least ink from the upper half: the gap below an accent, if there is one.
void drop_faintest_row(GlyphPicture& picture) {
    const auto row_at = [&](int y) {
        return picture.coverage.begin() + static_cast<std::ptrdiff_t>(y) * picture.width;
    };
    int faintest = 0, least = std::numeric_limits<int>::max();
    for (int y = 0; y < (picture.height + 1) / 2; ++y)
        if (const int ink = std::accumulate(row_at(y), row_at(y + 1), 0); ink < least) {
            faintest = y;
            least = ink;
        }
    picture.coverage.erase(row_at(faintest), row_at(faintest + 1));
    --picture.height;
}

constexpr std::array<unsigned char, 6> descenders{'g', 'j', 'p', 'Q', '(', '|'};

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

template <int bytes, std::uint32_t... field_masks>
void mix_row(unsigned char* pixels, const std::uint8_t* coverage, int count, std::uint32_t ink) {
    for (int i = 0; i < count; ++i, pixels += bytes) {
        if (coverage[i] == 0)
            continue;
        std::uint32_t pixel = ink;
        if (coverage[i] != 255) {
            pixel = 0;
            std::memcpy(&pixel, pixels, bytes);
            pixel = mix_fields<field_masks...>(pixel, ink, coverage[i]);
        }
        std::memcpy(pixels, &pixel, bytes);
    }
}

struct DepthRow {
    int depth;
    int bytes; ///< of a pixel in memory
    void (*write)(unsigned char* pixels, const std::uint8_t* coverage, int count, std::uint32_t ink);
};
constexpr DepthRow depth_rows[] = {{32, 4, mix_row<4, 0xFF, 0xFF00, 0xFF0000>},
                                   {24, 3, mix_row<3, 0xFF, 0xFF00, 0xFF0000>},
                                   {16, 2, mix_row<2, 0x1F, 0x7E0, 0xF800>},
                                   {15, 2, mix_row<2, 0x1F, 0x3E0, 0x7C00>}};

/// Draws a glyph into a memory bitmap with its pen at (x, y), y being the top of its cell, inside the clipping
/// rectangle and left of `end`.
void draw_glyph(BITMAP* target, const GlyphPicture& glyph, int x, int y, int end, int colour) {
    const int left = x + glyph.left, top = y + glyph.top;
    const Area drawable =
        target->clip ? Area{target->cl, target->ct, target->cr, target->cb} : Area{0, 0, target->w, target->h};
    const Area part = shared(drawable, {left, top, std::min(left + glyph.width, end), top + glyph.height});
    const auto depth = std::ranges::find(depth_rows, bitmap_color_depth(target), &DepthRow::depth);
    if (part.empty() || depth == std::end(depth_rows) || !is_memory_bitmap(target))
        return;
    for (int row = part.y1; row < part.y2; ++row)
        depth->write(target->line[row] + std::ptrdiff_t{part.x1} * depth->bytes,
                     glyph.coverage.data() + std::ptrdiff_t{row - top} * glyph.width + (part.x1 - left),
                     part.x2 - part.x1, static_cast<std::uint32_t>(colour));
}

} // namespace

void TrueTypeFont::Closer::operator()(FT_FaceRec_* face) const noexcept {
    FT_Done_Face(face);
}

void TrueTypeFont::set_spacing(int fixed_advance_px, int extra_px) {
    fixed_advance_ = std::clamp(fixed_advance_px, 0, 400);
    spacing_ = std::clamp(extra_px, -20, 100);
}

void TrueTypeFont::set_size(int height_px) {
    height_px = std::clamp(height_px, 1, 200);
    if (height_px == height_)
        return;
    height_ = height_px;
    // Hinting needs a whole em size: the largest at which the face fits the height.
    const long units = std::max<long>(face_->units_per_EM, 1), face_units = face_->ascender - face_->descender;
    const long em = face_units > 0 ? (2L * height_ + 1) * units / (2 * face_units) : height_;
    FT_Set_Pixel_Sizes(face_.get(), 0, static_cast<FT_UInt>(std::clamp(em, 1L, 400L)));
    const long ppem = face_->size->metrics.y_ppem;
    const auto ascent = static_cast<int>((2L * face_->ascender * ppem + units) / (2 * units));
    baseline_ = std::min(ascent, std::max(height_ - descent(), 0));
    hard_.fill({});
    smooth_.fill({});
    for (int code = 0; code < 256; ++code)
        advances_[static_cast<std::size_t>(code)] = face_advance(static_cast<unsigned char>(code));
}

unsigned TrueTypeFont::index_of(unsigned char character) const {
    const FT_ULong code = character >= 0x80 && character < 0xA0 ? windows_characters[character - 0x80u] : character;
    const bool is_control = code < 0x20 || (code >= 0x7F && code < 0xA0);
    return FT_Get_Char_Index(face_.get(), is_control ? FT_ULong{' '} : code);
}

// The designed advance, rounded: a text is as long with smooth edges as with hard ones.
int TrueTypeFont::face_advance(unsigned char character) const {
    FT_Fixed advance_16_16 = 0;
    if (FT_Get_Advance(face_.get(), index_of(character), FT_LOAD_NO_HINTING, &advance_16_16) != 0)
        return 0;
    return static_cast<int>((advance_16_16 + 0x8000) >> 16);
}

// Rows that common descenders take below the baseline.
int TrueTypeFont::descent() const {
    int rows = 0;
    for (const int flags : {hard_edges, smooth_edges})
        for (const unsigned char character : descenders)
            if (FT_Load_Glyph(face_.get(), index_of(character), flags) == 0)
                rows = std::max(rows, static_cast<int>(face_->glyph->bitmap.rows) - face_->glyph->bitmap_top);
    return rows;
}

int TrueTypeFont::advance(unsigned char character) const {
    return (fixed_advance_ > 0 ? fixed_advance_ : advances_[character]) + spacing_;
}

GlyphPicture TrueTypeFont::render(int flags, unsigned char character) const {
    GlyphPicture picture;
    if (FT_Load_Glyph(face_.get(), index_of(character), flags) != 0)
        return picture;
    const FT_GlyphSlot slot = face_->glyph;
    const FT_Bitmap& bitmap = slot->bitmap;
    const bool is_mono = bitmap.pixel_mode == FT_PIXEL_MODE_MONO;
    if (!is_mono && bitmap.pixel_mode != FT_PIXEL_MODE_GRAY)
        return picture;
    const int width = static_cast<int>(bitmap.width), rows = static_cast<int>(bitmap.rows);
    if (width == 0 || rows == 0)
        return picture;
    // Callers restore and fill only the text's box, so nothing may protrude: a character that overhangs to the left
    // moves right, an accent above the cell comes closer to its letter, a descender below the cell moves up.
    picture.width = width;
    picture.height = rows;
    picture.left = std::max(slot->bitmap_left, 0);
    picture.coverage.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(rows));
    for (int y = 0; y < rows; ++y) {
        const unsigned char* const row = bitmap.buffer + std::ptrdiff_t{y} * bitmap.pitch;
        for (int x = 0; x < width; ++x)
            picture.coverage.push_back(is_mono ? (row[x / 8] & 0x80 >> x % 8) != 0 ? 255 : 0 : row[x]);
    }
    for (picture.top = baseline_ - slot->bitmap_top; picture.top < 0 && picture.height > 1; ++picture.top)
        drop_faintest_row(picture);
    while (picture.height > height_)
        drop_faintest_row(picture);
    picture.top = std::clamp(picture.top, 0, height_ - picture.height);
    return picture;
}

int TrueTypeFont::text_length(std::string_view text) const {
    int length = 0;
    for (const char character : text)
        length += advance(static_cast<unsigned char>(character));
    return std::max(length, 0);
}

void TrueTypeFont::draw(BITMAP* target, std::string_view text, int x, int y, int colour, bool smooth) {
    if (!target)
        return;
    Glyphs& glyphs = smooth ? smooth_ : hard_;
    const int end = smooth ? x + text_length(text) : std::numeric_limits<int>::max();
    for (const char character : text) {
        const auto code = static_cast<unsigned char>(character);
        const int in_cell = fixed_advance_ > 0 ? std::max(0, (fixed_advance_ - advances_[code]) / 2) : 0;
        std::optional<GlyphPicture>& glyph = glyphs[code];
        if (!glyph)
            glyph = render(smooth ? smooth_edges : hard_edges, code);
        draw_glyph(target, *glyph, x + in_cell, y, end, colour);
        x += advance(code);
    }
}

bool init_truetype() {
    return renderer != nullptr || FT_Init_FreeType(&renderer) == 0;
}

void exit_truetype() {
    if (renderer)
        FT_Done_FreeType(renderer);
    renderer = nullptr;
}

std::unique_ptr<TrueTypeFont> load_truetype_font(const std::string& path) {
    FT_Face opened = nullptr;
    if (!renderer || !file_exists(path) || FT_New_Face(renderer, path.c_str(), 0, &opened) != 0)
        return nullptr;
    if (FT_IS_SCALABLE(opened) && FT_Select_Charmap(opened, FT_ENCODING_UNICODE) == 0)
        return std::make_unique<TrueTypeFont>(opened);
    FT_Done_Face(opened);
    return nullptr;
}

} // namespace vcc::platform
