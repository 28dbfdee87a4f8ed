// The graphics mode: always 800 x 600, in a window or full screen, at 32, 24, 16 or 15 bits.
#pragma once

#include <array>
#include <cstdint>

namespace vcc {

inline constexpr std::uint8_t windowed = 0, full_screen = 0xFF;

extern std::uint8_t fullscreen;        ///< 0 the display is a window, 0xFF it is full screen
extern int mode_range;                 ///< display modes offered: 0 none, 1 full screen only, 2 window only, 3 both
extern int screen_mode_range;          ///< the setting of that name in memory; -1 not yet probed
extern std::array<int, 3> depth_class; ///< flags for 32 bits, 24 bits, 15 or 16 bits; exactly one is set after a set-up

enum class SetupResult { ok = 0, fatal = 1, retry = 2 };
inline constexpr std::int8_t use_configured_mode = 0, probe_machine = -1;

/// Chooses and sets the mode, records what was found in the settings, installs the display-switch behaviour. Failures
/// are shown and logged.
SetupResult setup_graphics_mode(std::int8_t mode);

/// With toggle 0 sets the mode that `fullscreen` names again, with 1 changes to the other one; then shows buffer 0.
/// When the mode cannot be set, the previous one is set again, `fullscreen` keeps its value, and one log line says so.
void switch_display_mode(int toggle);

/// Sets the mode again in the depth of the setting `bitmap_depth`; 1 when done (the buffers are gone: load them again,
/// and install the pointer again), 0 when that depth is not offered and nothing was done.
int rebuild_display(int toggle);

/// Bits per pixel of a bitmap_depth setting; 0 outside 0 to 3.
constexpr int depth_bits(int bitmap_depth) {
    constexpr std::array<int, 4> bits{32, 24, 16, 15};
    return bitmap_depth >= 0 && bitmap_depth < 4 ? bits[static_cast<std::size_t>(bitmap_depth)] : 0;
}

} // namespace vcc
