// TrueType text in bitmaps of the graphics library. Texts are bytes in Windows Latin-1.
#pragma once

#include <allegro.h>

#include <memory>
#include <string>
#include <string_view>

namespace vcc::platform {

/// Starts the renderer, unless it is running. False if it cannot be started.
bool init_truetype();

/// Releases the renderer, after all fonts.
void exit_truetype();

/// A font file at one size. Caches its glyphs, so that a text costs about as much as one sprite per character.
class TrueTypeFont {
public:
    virtual ~TrueTypeFont() = default;

    /// Height of the face from ascender to descender in pixels, 1 to 200 (clamped).
    virtual void set_size(int height_px) = 0;

    /// Pixels added after every character; -20 to 100 (clamped).
    virtual void set_extra_spacing(int spacing_px) = 0;

    /// Advance of every character in pixels; 0 restores the face's own advances.
    virtual void set_fixed_advance(int advance_px) = 0;

    /// Width of a text in pixels, advances and extra spacing included.
    virtual int text_length(std::string_view text) const = 0;

    /// Draws with hard edges on what the target holds. (x, y) is the top left corner of the first character's cell,
    /// `colour` a pixel value of the target's depth.
    virtual void text_out(BITMAP* target, std::string_view text, int x, int y, int colour) = 0;

    /// The same with smoothed edges, blended into what the target holds (15, 16, 24 and 32 bits).
    virtual void text_out_aa(BITMAP* target, std::string_view text, int x, int y, int colour) = 0;
};

/// Loads a font file; null if it is missing or no font. Needs init_truetype() first.
std::unique_ptr<TrueTypeFont> load_truetype_font(const std::string& path);

} // namespace vcc::platform
