// The music of the screens: which theme plays next, one rule for all events, and what carries it out.
#pragma once

#include "core/installation.h"
#include "sound/music.h"

namespace vcc {

enum class ThemeEvent {
    wanted, ///< the stored theme is to play: stepped to, chosen, looped, reset, restored, or of another module
    ended,  ///< the theme has been heard to its end
    looked  ///< the screens check what plays, once per frame
};

/// The themes after the event; `stored` is the setting of the selected module. With `loop_all` all `theme_count` themes
/// play in turn, without it the stored one repeats. Pure.
Themes next_themes(const Themes& now, int stored, ThemeEvent event, bool loop_all, int theme_count);

/// What follows at the end of a theme, by the module's theme-loop flag.
ThemeOrder theme_order_of(Module module);

/// Plays the module's theme at its music level and makes it current; looping through all themes goes on from it. False
/// without sound or music, and after a failure.
bool play_theme_of(Module module);

/// Feeds the music. If all themes play in turn, stores the one now heard as the module's; true if it has changed.
bool notice_theme(Module module);

} // namespace vcc
