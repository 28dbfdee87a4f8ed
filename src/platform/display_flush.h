// Handing drawing to the display without waiting for the library's own thread.
#pragma once

namespace vcc::platform {

/// Sends what has been drawn on the screen to the display server now. Costs a few microseconds when there is nothing to
/// send; nothing happens without a display.
void flush_display();

} // namespace vcc::platform
