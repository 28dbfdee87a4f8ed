// The state machine that alternates between main menu and options screen.
#pragma once

#include "core/installation.h"

#include <allegro.h>

#include <optional>

namespace vcc {

/// Runs the screens from the main menu until the player picks a module or leaves; then returns nothing. Needs
/// all that cc/load.h loads.
std::optional<Module> run_cc_screens(BITMAP* target);

/// The pointer entered or left a slot of the running screen.
void on_pointer_over(BITMAP* target, int slot);

/// Once per frame: feeds the music and shows the theme that it has reached.
void follow_music(BITMAP* target);

} // namespace vcc
