// What the control centre's screens show now.
#pragma once

#include "settings/settings.h"

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
    loop_theme = 86 ///< not an option, but it has an explanation
};

enum class CcScreen : int { help = -1, menu, options };
inline CcScreen cc_screen = CcScreen::menu; ///< the current screen

inline int theme_display_live = 0; ///< the options screen may redraw its panels without input
inline int depth_at_menu = 0;      ///< `bitmap_depth` when the main menu was last entered, or as a reset has set it

// The options screen.
inline Module selected_module = Module::hq; ///< whose sound rows are shown
inline Row option_row = Row::effects;       ///< whose values are shown
inline int first_slot = 0;                  ///< current since the screen opened; 0 not yet known, -1 no more
inline int marked_value = 0;                ///< value whose entry is marked in the value panel
inline Row info_row = Row::none;            ///< whose explanation the box shows

constexpr std::size_t index_of(Module module) {
    return static_cast<std::size_t>(module);
}

// Settings of the selected module.
inline ModuleVolumes& selected_volumes() {
    return settings.volumes[index_of(selected_module)];
}
inline int& selected_theme() {
    return settings.theme[index_of(selected_module)];
}
inline int& selected_loop() {
    return theme_loop[index_of(selected_module)];
}

} // namespace vcc
