// The control centre's own screens: their slot sets, the state machine that alternates between them, and the hooks that
// the input loop calls.
#pragma once

#include "screen/slot.h"

#include <allegro.h>

namespace vcc {

extern int cc_screen;          ///< 0 main menu, 1 options screen, -1 while a help page is open
extern int theme_display_live; ///< the options screen may redraw its panels on its own
extern int depth_at_menu;      ///< `bitmap_depth` when the main menu was last entered

extern SlotSet menu_set, options_set, info_set, message_set;

/// Loads the four slot sets of the current language; 0, or 45 when one of them failed (logged).
int load_cc_slot_sets();

/// Releases the four slot sets.
void free_cc_slot_sets();

/// Settings, keyboard layout, field texts, volumes and the control centre's theme, once a pass.
void setup_cc_screens();

/// Copies the background picture to where text windows restore theirs from, and points the windows there: before the
/// screens run, and whenever the graphic buffers have been loaded again.
void prepare_background_copies();

/// Runs the screens from the main menu on until the player picks a module or leaves; returns the module choice: 0 HQ, 1
/// Factory, 2 Battle, 45 leave.
int run_cc_screens(BITMAP* target);

/// The pointer entered or left a slot of the running screen.
void on_pointer_over(BITMAP* target, int slot);

/// Once a frame: feeds the music and shows the theme that it has moved on to.
void follow_music(BITMAP* target);

} // namespace vcc
