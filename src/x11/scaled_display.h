// Shows the library's screen at any size, instead of in a window of its own size or by another mode of the monitor.
// Modules set their modes as usual and get our drivers.
#pragma once

#include "x11/picture_place.h"

#include <optional>
#include <string>

namespace vcc::platform {

/// Puts our drivers before the library's own: windows can then have any size, and full screen is a borderless window of
/// the window manager. The window starts at `first`. Returns what prevents it, else an empty text; the library's own
/// drivers then stay, as they do with Fit::none. Call it once, after the library's start and before the first mode is
/// set.
std::string show_scaled(Fit fit, const WindowPlace& first);

/// What has since prevented the picture from being shown at its window's size; reported once, else empty.
std::string scaled_display_trouble();

/// Shows what was drawn now, instead of within 10 ms; the window appears with it.
void show_scaled_drawing();

/// Whether the picture is shown in full screen, which a window manager can change by itself; nothing if the library
/// shows it.
std::optional<bool> shown_in_full_screen();

/// Where the window stands; nothing if the library shows it.
std::optional<WindowPlace> window_place();

} // namespace vcc::platform
