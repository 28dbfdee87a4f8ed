// The music of the screens: which theme plays next, and what carries it out.
#pragma once

#include "core/installation.h"
#include "sound/music.h"

namespace vcc {

/// What follows at the end of the theme that is heard: if the module's flag says so all themes play in turn, otherwise
/// that one repeats.
ThemeOrder theme_order_of(Module module);

/// Plays the module's theme at its music level and makes it current; looping through all themes goes on from it. False
/// without sound or music, and after a failure.
bool play_theme_of(Module module);

/// Feeds the music. If all themes play in turn, stores the one now heard as the module's; true if it has changed.
bool notice_theme(Module module);

} // namespace vcc
