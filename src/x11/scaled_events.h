// Reads the display's events for the library, which would take them for those of a window of its own size. The caller
// holds the display's lock.
#pragma once

#include "x11/desktop_window.h"
#include "x11/picture_place.h"
#include "x11/scaled_pointer.h"
#include "x11/shown_screen.h"

#include <vector>

namespace vcc::platform {

class ScaledEvents {
public:
    ScaledEvents(DesktopWindow& window, ShownScreen& shown) : window_(window), shown_(shown), pointer_(shown) {}

    /// Passes all waiting events on to the library, the window, the picture or the pointer. Returns the window's latest
    /// size, or `known` if no event tells it.
    Size read(Size known);

private:
    void handle(XEvent& event, Size& size);

    DesktopWindow& window_;
    ShownScreen& shown_;
    ScaledPointer pointer_;
    std::vector<XEvent> events_;
};

} // namespace vcc::platform
