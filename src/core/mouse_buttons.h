// What the mouse's buttons have done, press by press. The library's own variable only tells what is held now; a press
// and its release that come together, as some programs and touch pads send them, would never be seen.
#pragma once

namespace vcc {

/// From now on every press and release is noted, as the library's mouse callback, and the mouse ends waits for input.
void watch_mouse_buttons();

/// The buttons for the next frame of a loop (bit 0 left, bit 1 right, bit 2 middle): each state that was noted, one per
/// call, then the latest. A state that was reached elsewhere than the pointer was at the previous call waits for
/// another call, so that a move and the click that follows it stay separate.
int next_mouse_buttons();

/// The same state as the latest call returned.
int mouse_buttons();

/// Whether a button is held, or has been pressed since the latest call of next_mouse_buttons().
bool mouse_button_used();

/// Drops what nobody has seen yet; what is held now counts from the next call.
void forget_mouse_buttons();

} // namespace vcc
