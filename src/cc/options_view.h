// Draws the options screen: buttons, markers, the value panel, the explanation box and the loop-theme controls.
// Everything here draws on the given screen picture, from the settings and cc/state.h. No setting changes, and nothing
// reaches the display before the next update_screen().
#pragma once

#include "cc/option_rows.h"
#include "screen/slot.h"

#include <allegro.h>

namespace vcc {

inline constexpr int disabled_colour = 40;

/// Draws a slot of the options screen.
void draw_option_slot(BITMAP* target, int index);

/// Slot of the selected module's selector button.
int selector_button();

/// Draws a button highlighted, and leaves it so.
void draw_highlighted(BITMAP* target, int index);

/// Draw a button's pressed look, or its resting look again; nothing if its `activated` is 0.
void draw_pressed_look(BITMAP* target, const Slot& button);
void draw_released_look(BITMAP* target, const Slot& button);

/// Draw the selected module's marker in its resting look, or lit.
void draw_module_marker(BITMAP* target);
void draw_lit_module_marker(BITMAP* target);

/// Draws the sound rows' buttons in their normal look, the current one highlighted.
void restore_buttons(BITMAP* target);

/// Highlights the marked entry again.
void draw_marked_value(BITMAP* target);

/// Fills and draws a row's value panel.
void show_value_panel(BITMAP* target, const OptionRow& option);

/// Marks a row's current value and shows its panel.
void show_row_panel(BITMAP* target, const OptionRow& option);

/// The same for the current row if it is a sound row.
void show_module_row(BITMAP* target);

/// Restores the explanation box's background, then fills and draws it for a row; an unknown row leaves its lines
/// unchanged.
void show_explanation(BITMAP* target, Row row);

void show_loop_button();
void hide_loop_button();
/// Shows the button for the theme row, hides it for any other.
void show_loop_button_only_for_themes(const OptionRow& option);
/// Writes a module's loop-theme label; `number` is the theme's number, counted from 1.
void show_loop_label(Module module, int number);
/// Shows the button and the selected module's label.
void show_loop_controls();

/// Make the controls inert and grey until the slot set is loaded again.
void disable_sound_controls();
void disable_music_controls();

} // namespace vcc
