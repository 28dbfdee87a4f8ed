// Choosing a graphics mode: decisions and failure texts, without the library.
#pragma once

#include "core/installation.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vcc {

/// The display modes that the machine offers, as numbered in the settings file and for modules.
enum class ModeRange : int { untried = -1, none = 0, full_screen_only = 1, window_only = 2, both = 3 };

enum class SetupResult { ok = 0, fatal = 1, retry = 2 };

inline constexpr std::array<int, 4> depths{32, 24, 16, 15}; ///< bits, by the setting bitmap_depth and in trying order

/// Bits per pixel of a bitmap_depth setting; 0 outside 0 to 3.
constexpr int depth_bits(int bitmap_depth) {
    return bitmap_depth >= 0 && bitmap_depth < 4 ? depths[static_cast<std::size_t>(bitmap_depth)] : 0;
}

/// The desktop as the library reports it; 0 where unknown.
struct Desktop {
    int width = 0, height = 0, depth = 0;

    constexpr bool size_known() const { return width != 0 && height != 0; }
    constexpr bool is_exact() const { return width == layout_width && height == layout_height; }
};

enum class ModeFailure {
    desktop_size,
    desktop_depth,
    no_mode,
    probed_full_screen_at_15,
    probed_full_screen,
    probed_window_at_15,
    probed_window,
    configured_full_screen,
    configured_window,
    depth_not_found
};

struct ModeFailureRow {
    ModeFailure failure;
    std::string_view shown;  ///< text of the message box
    std::string_view logged; ///< text of the log entry; empty: the error line with `number`
    int number;              ///< 1 to 6 in the error line, else 0
    SetupResult result;
};
const ModeFailureRow& failure_row(ModeFailure failure);

/// The log entry of a failed mode; `screen` and `range` are `fullscreen` and `mode_range`.
std::string error_line(int number, const Desktop& desktop, int requested_depth, std::uint8_t screen, ModeRange range);

/// Why the program cannot run on a desktop, if it cannot.
std::optional<ModeFailure> desktop_failure(const Desktop& desktop);

/// A listed full-screen mode.
struct ListedMode {
    int width, height, depth;
};

/// The largest colour depth of a listed mode of 800 x 600, or, with a driver that centres, of any mode that is large
/// enough. 0 if none has 15 bits or more.
int best_listed_depth(std::span<const ListedMode> modes, bool centred);

/// `mode_range` after the search for full-screen modes: a desktop larger than the picture always offers a window.
constexpr ModeRange offered_modes(ModeRange range, bool exact_desktop) {
    if (exact_desktop)
        return range;
    return range != ModeRange::none ? ModeRange::both : ModeRange::window_only;
}

/// Which failure it is when a probed mode cannot be set.
constexpr ModeFailure probed_failure(bool full, int requested_depth) {
    if (requested_depth == 16)
        return full ? ModeFailure::probed_full_screen_at_15 : ModeFailure::probed_window_at_15;
    return full ? ModeFailure::probed_full_screen : ModeFailure::probed_window;
}

/// The bitmap_depth setting of a colour depth, if it has one.
std::optional<int> depth_setting(int bits);

/// The depth_class flags of a colour depth in use.
constexpr std::array<int, 3> depth_flags(int bits) {
    return {bits == 32, bits == 24, bits == 15 || bits == 16};
}

/// Whether the flags offer a bitmap_depth setting; the 15-or-16 flag answers for 16 and for 15 bits.
constexpr bool depth_offered(const std::array<int, 3>& flags, int bitmap_depth) {
    if (bitmap_depth < 0 || bitmap_depth > 3)
        return false;
    return flags[static_cast<std::size_t>(bitmap_depth == 3 ? 2 : bitmap_depth)] != 0;
}

} // namespace vcc
