// Choosing a graphics mode: decisions without the library.
#pragma once

#include "core/installation.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>

namespace vcc {

/// The display modes that the machine offers, as numbered in the settings file and for modules.
enum class ModeRange : int { untried = -1, none = 0, full_screen_only = 1, window_only = 2, both = 3 };

inline constexpr std::array<int, 4> depths{32, 24, 16, 15}; ///< bits, by the setting bitmap_depth and in trying order

/// Bits per pixel of a bitmap_depth setting; 0 outside 0 to 3.
constexpr int depth_bits(int bitmap_depth) {
    return bitmap_depth >= 0 && bitmap_depth < 4 ? depths[static_cast<std::size_t>(bitmap_depth)] : 0;
}

/// The bitmap_depth setting of a colour depth, if it has one.
constexpr std::optional<int> depth_setting(int bits) {
    const auto* const found = std::ranges::find(depths, bits);
    return found == depths.end() ? std::nullopt : std::optional(static_cast<int>(found - depths.begin()));
}

/// The desktop as the library reports it; 0 where unknown.
struct Desktop {
    int width = 0, height = 0, depth = 0;

    constexpr bool is_exact() const { return width == layout_width && height == layout_height; }
    constexpr bool is_too_small() const {
        return width != 0 && height != 0 && (width < layout_width || height < layout_height);
    }
};

struct ListedMode {
    int width, height, depth;
};

/// The largest colour depth of a listed mode of 800 x 600 or, if the driver centres the picture, of any larger mode; 0
/// below 15 bits.
constexpr int best_listed_depth(std::span<const ListedMode> modes, bool centred) {
    int best = 0;
    for (const ListedMode& mode : modes) {
        const bool exact = mode.width == layout_width && mode.height == layout_height;
        const bool roomy = mode.width >= layout_width && mode.height >= layout_height;
        if (exact || (centred && roomy))
            best = std::max(best, mode.depth);
    }
    return best >= 15 ? best : 0;
}

/// `mode_range` after the search for full-screen modes: a desktop larger than the picture always offers a window.
constexpr ModeRange offered_modes(ModeRange range, bool exact_desktop) {
    if (exact_desktop)
        return range;
    return range != ModeRange::none ? ModeRange::both : ModeRange::window_only;
}

/// The number of the failure when a mode cannot be set: 1 to 4 for a probed one, 5 and 6 for the configured one.
constexpr int failure_number(bool probed, bool full, int requested_depth) {
    if (!probed)
        return full ? 5 : 6;
    return (full ? 1 : 3) + (requested_depth == 16 ? 0 : 1);
}

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
