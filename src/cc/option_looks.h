// The looks of the options screen's slots and toggle records. Nothing here draws.
#pragma once

#include "cc/option_rows.h"

namespace vcc {

inline constexpr int disabled_colour = 40;

/// Gives a slot the colour of its resting look, which back_colour holds.
void give_normal_look(int index);

/// Gives a button the colour of its highlighted look.
void highlight(int index);

/// Gives the button of a value entry its resting look, or grey; the marked one is lit.
void rest_value(const OptionRow& option, int value);
void light_value(int value);

/// Makes an entry of the value panel what a row shows there now, with its label.
void set_entry(const OptionRow& option, int value);

/// Writes the lines of an explanation, `first` being the number of its first text.
void set_explanation(int first);

void show_loop_button(bool shown);
/// Writes the label of what a module plays: its theme, or all.
void show_loop_label(Module module);
/// Shows the button and the label of a module's theme.
void show_loop_controls(Module module);

/// Make the controls inert and grey until the slot set is loaded again.
void disable_sound_controls();
void disable_music_controls();

} // namespace vcc
