// Every value of the program that its screens change, so that a process can draw one picture after another as if each
// were its first.
#pragma once

#include "cc/options_screen.h"
#include "cc/sets.h"
#include "core/installation.h"
#include "core/log.h"
#include "display/graphics_mode.h"
#include "interaction/player_input.h"
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
    return std::tuple_cat(sound_values(), std::tie(cc_screen, options_screen),
                          std::tie(module_prefix, language, slot_prefix, text_window_prefix),
                          std::tie(fullscreen, mode_range, screen_mode_range, depth_class, settings, theme_loop,
                                   number_of_themes, anti_aliased_text, frame_rest, theme_fade_in),
                          std::tie(player_input, drawing, text_windows, current_text_window),
                          std::tie(music_playing, music_volume, themes, sfx_volume));
}

namespace detail {
template <class... Values>
std::tuple<Values...> copies_of(std::tuple<Values&...>);
}

/// A copy of what a function like these ties together.
template <auto values>
using Copies = decltype(detail::copies_of(values()));

} // namespace vcc::kit
