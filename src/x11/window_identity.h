// What a desktop knows of the program's window: whose it is, its icon, its title, and that it is alive.
#pragma once

#include "x11/x_library.h"

namespace vcc::platform {

/// Call after the library's start.
void identify_window();

/// Whether a window manager asks if the program is alive.
bool is_ping(const XEvent& event);
void answer_ping(XEvent event);

} // namespace vcc::platform
