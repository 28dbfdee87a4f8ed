// The lines on the options screen that join the selected module, the current row and the marked value.
#pragma once

#include "cc/option_rows.h"

#include <allegro.h>

namespace vcc {

/// Draws the lines for what the screen shows, and the value window under them; gives the buttons their normal look.
void draw_connectors(BITMAP* target, const OptionsState& state);

} // namespace vcc
