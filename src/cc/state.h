// What the control centre's screens show at the moment.
#pragma once

#include "core/installation.h"

#include <cstddef>

namespace vcc {

/// The options by their numbers; 10 is not used.
enum class Row : int {
    none = -1,
    effects = 0,
    music = 1,
    theme = 2,
    screen_mode = 3,
    resolution = 4,
    depth = 5,
    animations = 6,
    sprite_speed = 7,
    message_delay = 8,
    message_detail = 9,
    keyboard = 11,
    loop_theme = 86 ///< no option, but it has an explanation
};

enum class CcScreen : int { help = -1, menu, options };
extern CcScreen cc_screen; ///< the screen that is up

extern int theme_display_live; ///< the options screen may redraw its panels on its own
extern int depth_at_menu;      ///< `bitmap_depth` when the main menu was last entered, or since a reset changed it

// The options screen.
extern Module selected_module; ///< whose sound rows are shown
extern Row option_row;         ///< whose values are shown
extern int marked_value;       ///< value whose entry is marked in the value panel
extern Row info_row;           ///< whose explanation the box shows

constexpr std::size_t index_of(Module module) {
    return static_cast<std::size_t>(module);
}

} // namespace vcc
