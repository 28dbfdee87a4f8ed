// Taking over pointer and key events at a time of our choosing.
#pragma once

namespace vcc::platform {

/// Takes over the pointer and key events that the display server has sent. The graphics library does so in a thread of
/// its own, but only every 10 ms, which a player can feel. Costs one or two microseconds when there are none; nothing
/// happens without a display.
void take_display_events();

} // namespace vcc::platform
