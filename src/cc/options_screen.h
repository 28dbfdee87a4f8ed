// The options screen: what changes on it when the module, the row, a value or the pointer changes. All operations draw
// on the screen picture that they are given; nothing reaches the display before the next update_screen().
#pragma once

#include "cc/option_rows.h"
#include "core/installation.h"

#include <allegro.h>

namespace vcc {

inline constexpr int disabled_colour = 40;

/// Switches the module whose sound rows are edited (index 0 to 3) and plays its theme; nothing when it is selected
/// already.
void select_module(BITMAP* target, int module);

/// Shows the sound row of the selected module again: after a module switch, or with the pointer over the selector.
void refresh_module_rows(BITMAP* target);

/// Value panel of the current sound row with its value marked; nothing for other rows.
void show_module_row(BITMAP* target);

/// Marks an entry of the value panel.
void mark_value(BITMAP* target, int value);

/// Normal look for the sound rows' buttons, highlight for the current one.
void restore_buttons(BITMAP* target);

void show_loop_button();
void hide_loop_button();
/// The button belongs to the theme row alone.
void show_loop_button_only_for_themes(const OptionRow& option);
/// Writes the loop-theme label of a module; `number` is the theme's number as players count, from 1.
void show_loop_label(int module, int number);
/// The button, and the label of the selected module.
void show_loop_controls();

/// Makes the controls inert and grey until the slot set is loaded again.
void disable_sound_controls();
void disable_music_controls();

/// The options screen's half of on_pointer_over().
void options_pointer_over(BITMAP* target, int slot);

/// Draws the selected module's marker in its resting look, or lit.
void draw_module_marker(BITMAP* target);
void draw_lit_module_marker(BITMAP* target);

/// Starts a theme at music_volume; on failure the music controls are disabled, on success it is current, heard at that
/// volume, and the one that the themes in turn go on from.
bool play_theme(int theme);

/// Marks a row's current value and shows its panel.
void show_row_panel(BITMAP* target, const OptionRow& option, int direction = 1);

/// Fills and draws the value panel of a row. `direction` (+1, -1) is where a colour depth that is not offered moves to.
void show_value_panel(BITMAP* target, const OptionRow& option, int direction = 1);

/// Restores the explanation box, and fills and draws it for a row; an unknown row leaves the lines as they are.
void show_explanation(BITMAP* target, int row);

/// Draws the lines that join module, row and value.
void draw_connectors(BITMAP* target);

/// Where a depth setting moves when it is not offered: the neighbour in `direction` if that is, else as it was.
/// `offered` are the depth flags. Pure.
int neighbour_depth(int depth, int direction, const std::array<int, 3>& offered);

} // namespace vcc
