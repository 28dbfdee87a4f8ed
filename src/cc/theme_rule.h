// Which music theme plays next: one rule for everything that can happen, without any effect.
#pragma once

namespace vcc {

/// The numbers of a theme in the three places that hold one.
struct Themes {
    int streaming = 0; ///< what is heard
    int shown = 0;     ///< what the screens take for playing
    int stored = 0;    ///< the setting of the selected module

    bool operator==(const Themes&) const = default;
};

enum class ThemeEvent {
    wanted, ///< the stored theme is to be heard: stepped to, chosen, looped, of another module, reset, given back
    ended,  ///< the theme has been heard to its end
    looked  ///< the screens look at what plays, once per frame
};

/// What the event makes of the themes. `loop_all`: all `theme_count` themes of the module play one after another;
/// without it the stored one repeats. Pure.
Themes next_themes(const Themes& now, ThemeEvent event, bool loop_all, int theme_count);

} // namespace vcc
