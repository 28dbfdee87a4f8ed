// The graphics mode: always 800 x 600, in a window or full screen, at 32, 24, 16 or 15 bits.
#pragma once

#include "core/installation.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace vcc {

/// The display modes that the machine offers, as numbered in the settings file and for modules.
enum class ModeRange : int { untried = -1, none = 0, full_screen_only = 1, window_only = 2, both = 3 };

inline constexpr std::uint8_t windowed = 0, full_screen = 0xFF;

inline std::uint8_t fullscreen = windowed;               ///< 0 window, 0xFF full screen
inline ModeRange mode_range = ModeRange::none;           ///< as the latest set-up found it
inline ModeRange screen_mode_range = ModeRange::untried; ///< the setting of that name
inline std::array<int, 3> depth_class{}; ///< flags for 32, 24, and 15 or 16 bits; a set-up sets exactly one

inline constexpr std::array<int, 4> depths{32, 24, 16, 15}; ///< bits, by the setting bitmap_depth and in trying order

/// The bitmap_depth setting of a colour depth, if it has one.
constexpr std::optional<int> depth_setting(int bits) {
    const auto* const found = std::ranges::find(depths, bits);
    return found == depths.end() ? std::nullopt : std::optional(static_cast<int>(found - depths.begin()));
}

/// The depth_class flags of a colour depth in use.
constexpr std::array<int, 3> depth_flags(int bits) {
    return {bits == 32, bits == 24, bits == 15 || bits == 16};
}

inline constexpr std::int8_t use_configured_mode = 0, probe_machine = -1;

enum class SetupResult { ok = 0, fatal = 1, retry = 2 };

/// Chooses and sets the mode, records it in the settings and installs the display-switch behaviour. Shows and logs
/// failures; logs once what prevents the scaling that the settings ask for.
SetupResult setup_graphics_mode(std::int8_t mode);

/// Updates `fullscreen`, which a window manager's own commands can change.
void follow_window_manager();

/// Changes to the other mode, or without `toggle` sets the mode of `fullscreen` again; then shows buffer 0. If that
/// fails, restores the previous mode, keeps `fullscreen` and logs it.
void switch_display_mode(bool toggle);

/// Does nothing if the display is fit for the screens: 800 x 600, 15 bits or more, new bitmaps in its depth. Otherwise
/// sets the mode of `fullscreen`, or if that fails the other one, at `depth` bits, and logs what `culprit`, a module's
/// file, has left behind.
void ensure_display(int depth, const std::string& culprit);

/// Sets the mode again at the depth of `bitmap_depth`. True if done: buffers must be loaded again and the pointer
/// reinstalled. False, with nothing changed, if that depth is not offered.
bool rebuild_display(bool toggle);

/// Stores size, place and state of a scaled picture's window for the next start.
void remember_window();

} // namespace vcc
