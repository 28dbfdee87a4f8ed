// What the three sample modules have in common: a picture, a panel with orders and what the control centre has handed
// over, and a loop that ends on Escape or a click. It shows how a module draws in the display that it was given, and
// how it leaves that display behind.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace module {

/// Texts are UTF-8, one for each language in the order of tools/language.ini: English, German.
using Text = std::array<std::string_view, 2>;

struct Line {
    Text label;
    std::string value; ///< Latin-1
};

/// What one module shows.
struct Screen {
    Text title;
    Text subtitle;
    std::array<Text, 3> orders;
    const char* picture; ///< PCX file below the installation's folder; its left half is calm
    std::vector<Line> lines;
    std::int32_t version; ///< of the control centre, times 100
    int mode_range;       ///< 3: window and full screen can be switched with Alt+W
};

/// Shows the screen until Escape or a mouse button; returns the display mode that is then in force (0 window, 0xFF full
/// screen).
std::uint8_t run(const Screen& screen, std::uint8_t fullscreen);

/// The player's language of a text, as Latin-1.
std::string in_language(const Text& text);

/// A key of the shared configuration file.
std::string setting(const char* section, const char* key, const char* fallback);
int number_setting(const char* section, const char* key, int fallback);

/// "32 Bit" for 0 to "15 Bit" for 3, and what a mode range offers, in the player's language.
std::string depth_name(std::int32_t bitmap_depth);
std::string range_name(std::int32_t mode_range);

} // namespace module
