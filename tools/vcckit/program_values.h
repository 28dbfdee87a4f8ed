// Every value of the program that its screens change, so that a process can draw one picture after another as if each
// were its first.
#pragma once

#include "cc/options_screen.h"
#include "cc/sets.h"
#include "core/layout.h"
#include "core/log.h"
#include "display/graphics_mode.h"
#include "interaction/focus.h"
#include "interaction/help.h"
#include "interaction/pointer_frame.h"
#include "interaction/text_edit.h"
#include "screen/draw.h"
#include "screen/draw_slot.h"
#include "screen/text_window.h"
#include "settings/settings.h"
#include "sound/music.h"
#include "sound/sound.h"
#include "text/fonts.h"
#include "text/language.h"

#include <tuple>
#include <type_traits>

namespace vcc::kit {

/// What the sound set-up leaves behind.
inline auto sound_values() {
    return std::tie(sound_on, music_on);
}

inline auto program_values() {
    return std::tuple_cat(
        sound_values(), std::tie(cc_screen, options_screen),
        std::tie(layout_width, layout_height, module_prefix, language, slot_prefix, text_window_prefix),
        std::tie(fullscreen, mode_range, screen_mode_range, depth_class, settings, theme_loop, number_of_themes,
                 anti_aliased_text, frame_rest, theme_fade_in),
        std::tie(pointer_by_keyboard, help_line_length, insert_mode, pointer_memory),
        std::tie(text_on_box, full_redraw, show_slot_pictures, text_windows, current_text_window, dot_spacing),
        std::tie(music_playing, music_volume, themes, sfx_volume),
        std::tie(current_font, previous_font, grid_rows, grid_columns));
}

namespace detail {
template <class... Values>
std::tuple<Values...> copies_of(std::tuple<Values&...>);
}

/// A copy of what a function like these ties together.
template <auto values>
using Copies = decltype(detail::copies_of(values()));

} // namespace vcc::kit
