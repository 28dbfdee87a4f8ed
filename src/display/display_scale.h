// The setting that scales the picture of 800 x 600.
#pragma once

namespace vcc {

/// Applies the setting `display_scale` from the next mode on; 0 or an unknown value leaves windows and full screen to
/// the library. If the display cannot scale, one log line says why, and 0 applies. Only the first call has an effect.
void start_display_scaling();

/// Keeps the window's size, place and state for the next start, unless 0 applies.
void remember_window();

} // namespace vcc
