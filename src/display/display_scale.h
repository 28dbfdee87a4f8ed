// The setting that shows the picture of 800 x 600 at other sizes.
#pragma once

namespace vcc {

/// Follows the setting `display_scale` from the next mode on: 0 or anything unknown leaves windows and full screen to
/// the library. When the display cannot do it, one log line says why, and all is as with 0. Later calls change nothing.
void start_display_scaling();

} // namespace vcc
