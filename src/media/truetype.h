// TrueType text in bitmaps of the graphics library. Texts are bytes in Windows Latin-1.
#pragma once

#include <allegro.h>

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct FT_FaceRec_; // FreeType's font

namespace vcc::platform {

/// A character as coverage values, 0 (none) to 255 (all of the pixel).
struct GlyphPicture {
    int width = 0, height = 0; ///< pixels
    int left = 0;              ///< columns from the pen to the first column
    int top = 0;               ///< rows from the top of the cell to the first row
    std::vector<std::uint8_t> coverage;
};

/// Starts the renderer, unless it is running. False if it cannot be started.
bool init_truetype();

/// Releases the renderer, after all fonts.
void exit_truetype();

/// A font file at one size. Caches its glyphs: a text costs about one sprite per character.
class TrueTypeFont {
public:
    /// Takes over a scalable font, which has no characters before set_size().
    explicit TrueTypeFont(FT_FaceRec_* face) : face_(face) {}

    /// Height of the face from ascender to descender in pixels, 1 to 200 (clamped).
    void set_size(int height_px);

    /// Advance of every character in pixels, 0 for the face's own advances, and pixels added to it; 0 to 400 and -20 to
    /// 100 (clamped).
    void set_spacing(int fixed_advance_px, int extra_px);

    /// Width of a text in pixels, advances and extra spacing included.
    int text_length(std::string_view text) const;

    /// Draws on what the target, a memory bitmap of 15 bits or more, holds; smoothed edges are blended into it. (x, y)
    /// is the top left corner of the first character's cell, `colour` a pixel value of the target's depth.
    void draw(BITMAP* target, std::string_view text, int x, int y, int colour, bool smooth);

private:
    using Glyphs = std::array<std::optional<GlyphPicture>, 256>;
    struct Closer {
        void operator()(FT_FaceRec_* face) const noexcept;
    };

    GlyphPicture render(int flags, unsigned char character) const;
    unsigned index_of(unsigned char character) const;
    int face_advance(unsigned char character) const;
    int descent() const;
    int advance(unsigned char character) const;

    std::unique_ptr<FT_FaceRec_, Closer> face_;
    int height_ = 0;   ///< of the cell, pixels
    int baseline_ = 0; ///< rows from the top of the cell
    int spacing_ = 0;
    int fixed_advance_ = 0;
    std::array<int, 256> advances_{};
    Glyphs hard_, smooth_; ///< by the way in which they are drawn
};

/// Loads a font file; null if it is missing or no font. Needs init_truetype() first.
std::unique_ptr<TrueTypeFont> load_truetype_font(const std::string& path);

} // namespace vcc::platform
