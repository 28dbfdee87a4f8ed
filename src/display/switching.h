// Switching to another program and back, and requests to close.
#pragma once

#include <atomic>

namespace vcc {

inline std::atomic<int> switched_out = 0; ///< 1 while switched away; only the two callbacks write it

/// Sets the switch behaviour for `fullscreen` and registers the callbacks; failures are shown and logged.
void install_display_switching();

void on_switch_in();
void on_switch_out();

/// Not 0 once the program has been asked to close; it then leaves as with Alt+X.
inline std::atomic<int> close_requested = 0;

/// Asks the program to close, from any thread. A module or an alert that has the keyboard sees Escape and returns.
void request_close();

/// Has the window's close button call request_close().
void install_close_button();

} // namespace vcc
