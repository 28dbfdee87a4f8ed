// TrueType text in bitmaps of the graphics library. Texts are bytes in Windows Latin-1.
#pragma once

#include <allegro.h>

#include <memory>
#include <string>
#include <string_view>

namespace vcc::platform {

/// Starts the renderer; calling it again is allowed. False when it cannot be started.
bool init_truetype();

/// Releases the renderer. Fonts must be gone before.
void exit_truetype();

/// One font file at one size, with its glyphs cached, so that drawing a text costs about what a sprite a character
/// costs.
class TrueTypeFont {
public:
    virtual ~TrueTypeFont() = default;

    /// Height of the face from ascender to descender in pixels, 1 to 200 (clamped).
    virtual void set_size(int height_px) = 0;

    /// Pixels added after every character; -20 to 100 (clamped).
    virtual void set_extra_spacing(int spacing_px) = 0;

    /// Advance of every character in pixels, whatever the face says; 0 gives the face's own advances back.
    virtual void set_fixed_advance(int advance_px) = 0;

    /// Width of a text in pixels, advances and extra spacing included.
    virtual int text_length(std::string_view text) const = 0;

    /// Draws with hard edges; (x, y) is the top left corner of the first character's cell. `colour` and `background`
    /// are pixel values of the target's depth; a background of -1 is transparent, otherwise the text's box is filled
    /// with it.
    virtual void text_out(BITMAP* target, std::string_view text, int x, int y, int colour, int background = -1) = 0;

    /// The same with smoothed edges, blended into what the target holds (15, 16, 24 and 32 bits).
    virtual void text_out_aa(BITMAP* target, std::string_view text, int x, int y, int colour, int background = -1) = 0;
};

/// Loads a font file; null when the file is missing or is not a font. init_truetype() must have succeeded.
std::unique_ptr<TrueTypeFont> load_truetype_font(const std::string& path);

} // namespace vcc::platform
