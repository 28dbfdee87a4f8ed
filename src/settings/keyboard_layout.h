// The keyboard layout: which mapping file the graphics library reads when the keyboard is installed.
#pragma once

#include <string_view>

namespace vcc {

/// Mapping file of a keyboard setting; any value outside 0 to 5 gives the US file.
std::string_view keyboard_mapping_file(int keyboard);

/// Installs the keyboard, with the installation's list of accents.
void start_keyboard();

/// Stores the mapping file of the current setting in the configuration and flushes it.
void write_keyboard_layout();

/// write_keyboard_layout(), then installs the keyboard again, so that the mapping is in force at once.
void apply_keyboard_layout();

} // namespace vcc
