// Which music theme plays next: one rule for all events, free of effects.
#pragma once

namespace vcc {

/// The theme numbers in the three places that hold one.
struct Themes {
    int streaming = 0; ///< what is heard
    int shown = 0;     ///< what the screens consider playing
    int stored = 0;    ///< the setting of the selected module

    bool operator==(const Themes&) const = default;
};

enum class ThemeEvent {
    wanted, ///< the stored theme is to play: stepped to, chosen, looped, reset, restored, or of another module
    ended,  ///< the theme has been heard to its end
    looked  ///< the screens check what plays, once per frame
};

/// The themes after the event. With `loop_all` all `theme_count` themes play in turn, without it the stored one
/// repeats. Pure.
Themes next_themes(const Themes& now, ThemeEvent event, bool loop_all, int theme_count);

} // namespace vcc
