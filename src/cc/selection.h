// What is selected on the options screen: the module and the option row, by click and by pointing.
#pragma once

#include "cc/option_rows.h"

#include <allegro.h>

namespace vcc {

/// The row that the options screen opens with on this machine.
Row first_option_row();

/// Shows a row that the player steps, chooses or points at: its value marked, its panel filled. Before, the settings
/// follow the machine: a depth that the display lacks moves in `direction` (+1, -1); the mapping file of the keyboard
/// is written.
void show_option(BITMAP* target, const OptionRow& option, int direction = 1);

/// Switches the module whose sound rows are edited and plays its theme; nothing when it is selected already.
void select_module(BITMAP* target, Module module);

/// Shows the sound row of the selected module again: after a module switch, or with the pointer over the selector.
void refresh_module_rows(BITMAP* target);

/// The pointer entered or left a slot of the options screen.
void point_at_option(BITMAP* target, int slot);

} // namespace vcc
