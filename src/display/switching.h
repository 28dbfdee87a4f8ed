// Switching to another program and back, and requests to close.
#pragma once

namespace vcc {

/// Sets the switch behaviour for `fullscreen` and registers the callbacks; failures are shown and logged.
void install_display_switching();

/// Sets `close_requested` (core/window_state.h), from any thread. A module or an alert that has the keyboard sees
/// Escape and returns.
void request_close();

/// Has the window's close button call request_close().
void install_close_button();

} // namespace vcc
