// An X11 desktop: its monitors and window manager. The caller holds the display's lock.
#pragma once

#include "x11/picture_place.h"
#include "x11/x_library.h"

#include <vector>

namespace vcc::platform {

/// The desktop with all of its monitors.
Area whole_desktop();

/// Room for a new window: the monitor under the pointer without the desktop's bars.
Area room_for_window();

/// How much larger than usual the player wants things to be: 1 if he has not said so.
double desktop_scale();

/// A window's numbers or atoms of that name; empty if there are none.
std::vector<unsigned long> window_property(Window window, const char* name, Atom wanted_type);

/// Whether a window manager is running that can show a window full screen.
bool manager_shows_full_screen();

} // namespace vcc::platform
