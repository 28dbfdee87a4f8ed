// Shows the library's screen at any size, instead of in a window of its own size or by another mode of the monitor.
// Modules set their modes as usual and get our drivers.
#pragma once

#include "platform/picture_place.h"

#include <string>

namespace vcc::platform {

/// Puts our drivers before the library's own: windows can then have any size, and full screen is a borderless window of
/// the window manager. Call after the library's start and before the first mode is set; later calls change nothing.
/// Returns what prevents it, and the library's own drivers stay; empty if it works.
std::string show_scaled(Fit fit);

/// What has since prevented the picture from being shown at its window's size; reported once, else empty.
std::string scaled_display_trouble();

/// Shows what was drawn now, instead of within 10 ms.
void show_scaled_drawing();

/// Whether a window manager handles the full-screen window and its keyboard focus.
bool full_screen_is_managed();

} // namespace vcc::platform
