// What is selected on the options screen: the module and the option row, by click and by pointing.
#pragma once

#include "cc/option_rows.h"

#include <allegro.h>

namespace vcc {

/// The row that the options screen opens with on this machine.
Row first_option_row();

/// Shows a row that the player steps, chooses or points at: marks its value and fills its panel. First settles a depth
/// that the display lacks in `direction` (+1, -1), and writes the keyboard's mapping file.
void show_option(BITMAP* target, const OptionRow& option, int direction = 1);

/// Selects the module whose sound rows are edited and plays its theme; does nothing if it is selected already.
void select_module(BITMAP* target, Module module);

/// Shows the selected module's sound row again: after a module switch, or with the pointer on the selector.
void refresh_module_rows(BITMAP* target);

/// The pointer entered or left a slot of the options screen.
void point_at_option(BITMAP* target, int slot);

} // namespace vcc
