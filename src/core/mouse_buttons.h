// The mouse's presses and releases, one by one. The library's variable only says what is held now: a press and release
// at the same moment, as some touch pads send them, would be missed.
#pragma once

namespace vcc {

/// From now on notes every press and release, as the library's mouse callback; any mouse event ends a wait for input.
void watch_mouse_buttons();

/// The buttons for the next frame (bit 0 left, bit 1 right, bit 2 middle): the noted states, one per call, then the
/// latest. If the pointer has moved since the previous call, a state waits for one more call: a move and the click
/// after it stay separate.
int next_mouse_buttons();

/// The state that the latest call returned.
int mouse_buttons();

/// Whether a button is held, or has been pressed since the latest call of next_mouse_buttons().
bool mouse_button_used();

/// Drops states not yet returned; the next call starts from what is held now.
void forget_mouse_buttons();

} // namespace vcc
