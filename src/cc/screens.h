// The state machine that alternates between main menu and options screen.
#pragma once

#include <allegro.h>

namespace vcc {

/// Runs the screens from the main menu on until the player picks a module or leaves; returns the module choice: 0 HQ, 1
/// Factory, 2 Battle, 45 leave. Everything that load_installation() loads is there.
int run_cc_screens(BITMAP* target);

/// The pointer entered or left a slot of the running screen.
void on_pointer_over(BITMAP* target, int slot);

/// Once a frame: feeds the music and shows the theme that it has moved on to.
void follow_music(BITMAP* target);

} // namespace vcc
