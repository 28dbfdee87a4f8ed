// The graphics mode: always 800 x 600, in a window or full screen, at 32, 24, 16 or 15 bits.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace vcc {

inline constexpr std::uint8_t windowed = 0, full_screen = 0xFF;

/// Which display modes the machine offers, as the settings file and the modules count them.
enum class ModeRange : int { untried = -1, none = 0, full_screen_only = 1, window_only = 2, both = 3 };

extern std::uint8_t fullscreen;        ///< 0 the display is a window, 0xFF it is full screen
extern ModeRange mode_range;           ///< what the latest set-up found
extern ModeRange screen_mode_range;    ///< the setting of that name in memory
extern std::array<int, 3> depth_class; ///< flags for 32 bits, 24 bits, 15 or 16 bits; exactly one is set after a set-up

enum class SetupResult { ok = 0, fatal = 1, retry = 2 };
inline constexpr std::int8_t use_configured_mode = 0, probe_machine = -1;

/// Chooses and sets the mode, records what was found in the settings, installs the display-switch behaviour. Failures
/// are shown and logged.
SetupResult setup_graphics_mode(std::int8_t mode);

/// Changes to the other mode, or without `toggle` sets the one that `fullscreen` names again; then shows buffer 0.
/// When the mode cannot be set, the previous one is set again, `fullscreen` keeps its value, and one log line says so.
void switch_display_mode(bool toggle);

/// Does nothing while the display is as screens need it: 800 x 600, at 15 bits or more, new bitmaps in its depth.
/// Otherwise sets the mode that `fullscreen` names, or failing that the other one, at `depth` bits; one log line says
/// what `culprit`, a module's file, has left.
void ensure_display(int depth, const std::string& culprit);

/// Sets the mode again in the depth of the setting `bitmap_depth`; true when done (the buffers are gone: load them
/// again, and install the pointer again), false when that depth is not offered and nothing was done.
bool rebuild_display(bool toggle);

/// Bits per pixel of a bitmap_depth setting; 0 outside 0 to 3.
constexpr int depth_bits(int bitmap_depth) {
    constexpr std::array<int, 4> bits{32, 24, 16, 15};
    return bitmap_depth >= 0 && bitmap_depth < 4 ? bits[static_cast<std::size_t>(bitmap_depth)] : 0;
}

} // namespace vcc
