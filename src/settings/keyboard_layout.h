// The keyboard layout: the mapping file that the graphics library reads when the keyboard is installed.
#pragma once

namespace vcc {

/// Installs the keyboard, with the installation's list of accents.
void start_keyboard();

/// Stores the mapping file of the current setting in the configuration and flushes it.
void write_keyboard_layout();

/// Does that and reinstalls the keyboard, which puts the mapping into effect.
void apply_keyboard_layout();

} // namespace vcc
