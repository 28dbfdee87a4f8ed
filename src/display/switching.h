// What happens when the player switches to another program and back.
#pragma once

#include <atomic>

namespace vcc {

extern std::atomic<int> switched_out; ///< 1 while the program is switched away; written by the two callbacks only

/// Sets the switch behaviour that fits `fullscreen` and registers the callbacks; failures are shown and logged.
void install_display_switching();

void on_switch_in();
void on_switch_out();

/// True once the window's close button was pressed. The program then leaves as with Alt+X.
extern std::atomic<int> close_requested;
void install_close_button();

} // namespace vcc
