// Reads the display's events for the library, which would take them for those of a window of its own size. The caller
// holds the display's lock.
#pragma once

#include "platform/desktop_window.h"
#include "platform/picture_place.h"
#include "platform/scaled_pointer.h"
#include "platform/shown_screen.h"

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
