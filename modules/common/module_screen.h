// What the three sample modules have in common: a picture, a panel of lines, and a loop that ends on Escape or a click.
// It shows how a module draws in the display that it was given, and how it leaves that display behind.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace module {

struct Line {
    std::string label;
    std::string value;
};

/// What one module shows.
struct Screen {
    const char* title;
    const char* subtitle;
    const char* picture; ///< PCX file below the installation's folder
    std::vector<Line> lines;
    int mode_range; ///< 3: window and full screen can be switched with Alt+W
};

/// Shows the screen until Escape or a mouse button; returns the display mode that is then in force (0 window, 0xFF full
/// screen).
std::uint8_t run(const Screen& screen, std::uint8_t fullscreen);

/// A key of the shared configuration file.
std::string setting(const char* section, const char* key, const char* fallback);
int number_setting(const char* section, const char* key, int fallback);

/// "window" or "full screen"; the version as players read it; the modes that a range stands for.
std::string mode_name(std::uint8_t fullscreen);
std::string version_name(std::int32_t version);
std::string range_name(std::int32_t mode_range);

} // namespace module
