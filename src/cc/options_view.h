// What the options screen looks like: its buttons, markers, the value panel, the explanation box and the loop-theme
// controls. Everything here draws on the screen picture that it is given, from the settings and from cc/state.h; no
// setting changes, and nothing reaches the display before the next update_screen().
#pragma once

#include "cc/option_rows.h"
#include "screen/slot.h"

#include <allegro.h>

namespace vcc {

inline constexpr int disabled_colour = 40;

/// A slot of the options screen, or its highlighted look.
void draw_option_slot(BITMAP* target, int index);
void draw_option_toggle(BITMAP* target, int index);

/// Slot of the selected module's selector button.
int selector_button();

/// Draws a button highlighted, and leaves it so.
void draw_highlighted(BITMAP* target, int index);

/// The looks of a button that has been pressed: `pressed` or at rest again. A button whose `activated` is 0 has none.
void draw_pressed_look(BITMAP* target, const Slot& button);
void draw_released_look(BITMAP* target, const Slot& button);

/// Draws the selected module's marker in its resting look, or lit.
void draw_module_marker(BITMAP* target);
void draw_lit_module_marker(BITMAP* target);

/// Normal look for the sound rows' buttons, highlight for the current one.
void restore_buttons(BITMAP* target);

/// Marks an entry of the value panel.
void mark_value(BITMAP* target, int value);

/// Highlights the marked entry again.
void draw_marked_value(BITMAP* target);

/// Fills and draws the value panel of a row.
void show_value_panel(BITMAP* target, const OptionRow& option);

/// Marks a row's current value and shows its panel.
void show_row_panel(BITMAP* target, const OptionRow& option);

/// The same for the current row when it is a sound row; nothing for other rows.
void show_module_row(BITMAP* target);

/// Restores the explanation box, and fills and draws it for a row; an unknown row leaves the lines as they are.
void show_explanation(BITMAP* target, Row row);

void show_loop_button();
void hide_loop_button();
/// The button belongs to the theme row alone.
void show_loop_button_only_for_themes(const OptionRow& option);
/// Writes the loop-theme label of a module; `number` is the theme's number as players count, from 1.
void show_loop_label(Module module, int number);
/// The button, and the label of the selected module.
void show_loop_controls();

/// Makes the controls inert and grey until the slot set is loaded again.
void disable_sound_controls();
void disable_music_controls();

} // namespace vcc
