// Draws the options screen: buttons, markers, the value panel, the explanation box. Everything here draws on the given
// screen picture, from the settings and the screen's state. Nothing reaches the display before the next
// update_screen().
#pragma once

#include "cc/option_rows.h"
#include "screen/slot.h"

#include <allegro.h>

namespace vcc {

void draw_option_slot(BITMAP* target, int index);

/// Draws a button highlighted, and leaves it so.
void draw_highlighted(BITMAP* target, int index);

/// Draws a button's pressed look, or its resting look again; nothing if its `activated` is 0.
void draw_press(BITMAP* target, const Slot& button, bool pressed);

void draw_module_marker(BITMAP* target, const OptionsState& state, bool lit = false);

/// Draws the sound rows' buttons in their normal look, the current one highlighted.
void restore_buttons(BITMAP* target, const OptionsState& state);

/// Draws the value buttons in their resting look, or highlights the marked one again.
void draw_resting_values(BITMAP* target, const OptionsState& state);
void draw_marked_value(BITMAP* target, const OptionsState& state);

/// Fills and draws a row's value panel.
void draw_value_panel(BITMAP* target, const OptionsState& state, const OptionRow& option);

/// Restores the explanation box's background, then draws its lines.
void draw_explanation(BITMAP* target);

} // namespace vcc
