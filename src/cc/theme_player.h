// The music of the screens: carries out the theme rule.
#pragma once

namespace vcc {

/// Answers the music's question what follows at the end of a theme: by the theme-loop flag of the selected module.
void answer_for_theme_order();

/// Plays the theme of the selected module at its music level. On failure the music controls are disabled; on success
/// the theme is current and the one that the themes in turn go on from. Nothing without sound or music.
bool play_selected_theme();

/// Feeds the music; with all themes in turn the selected module's theme becomes the one that is heard. True when that
/// changed.
bool notice_theme();

} // namespace vcc
