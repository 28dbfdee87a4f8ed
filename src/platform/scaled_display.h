// The library's screen shown at any size, instead of in a window of its own size or by another mode of the monitor.
// Modules set their modes as ever: the drivers that they get are ours.
#pragma once

#include "platform/picture_place.h"

#include <string>

namespace vcc::platform {

/// Puts drivers of ours before the library's own: windows then can have any size, and full screen is a window that the
/// window manager shows without borders. Call after the library's start and before the first mode is set; later calls
/// change nothing. Answers what stands against it: the library's own drivers are then in charge. Empty when all is
/// well.
std::string show_scaled(Fit fit);

/// What has since kept the picture from being shown at its window's size; told once, else empty.
std::string scaled_display_trouble();

/// Shows what was drawn. Without it that is done within 10 ms.
void show_scaled_drawing();

/// Whether a window manager cares for the full-screen window, and for its keyboard focus.
bool full_screen_is_managed();

} // namespace vcc::platform
