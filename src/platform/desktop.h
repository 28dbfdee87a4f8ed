// What an X11 desktop offers: its monitors, its window manager. The caller holds the display's lock.
#pragma once

#include "platform/picture_place.h"

namespace vcc::platform {

/// The desktop with all of its monitors.
Area whole_desktop();

/// What a new window may take: the monitor that the pointer is on, without the desktop's bars.
Size room_for_window();

/// Whether a window manager is there that shows a window full screen when asked.
bool manager_shows_full_screen();

} // namespace vcc::platform
