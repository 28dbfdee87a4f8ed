// What happens when the player switches to another program and back.
#pragma once

#include <atomic>

namespace vcc {

extern std::atomic<int> switched_out; ///< 1 while the program is switched away; written by the two callbacks only

/// Sets the switch behaviour that fits `fullscreen` and registers the callbacks; failures are shown and logged.
void install_display_switching();

void on_switch_in();
void on_switch_out();

/// True once the program was asked to close. It then leaves as with Alt+X.
extern std::atomic<int> close_requested;

/// Asks the program to close, from any thread: a module or an alert that has the keyboard sees Escape and comes back.
void request_close();

/// The window's close button asks it.
void install_close_button();

} // namespace vcc
