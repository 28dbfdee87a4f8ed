// The music of the screens: carries out the theme rule.
#pragma once

namespace vcc {

/// Tells the music what follows at the end of a theme, by the theme-loop flag of the selected module.
void answer_for_theme_order();

/// Plays the theme of the selected module at its music level and makes it current; looping through all themes goes on
/// from it. False without sound or music, and after a failure, which disables the music controls.
bool play_selected_theme();

/// Feeds the music. If all themes play in turn, stores the one that is heard as the selected module's; true if that is
/// another one.
bool notice_theme();

} // namespace vcc
