// Reading the display's events in place of the library, which would take them for those of a window of its own size.
// The caller holds the display's lock.
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

    /// Hands all waiting events on: to the library what it knows to handle, and to window and picture what is theirs.
    /// Answers the window's size as last told, `known` when nothing is told.
    Size read(Size known);

private:
    void handle(XEvent& event, Size& size);

    DesktopWindow& window_;
    ShownScreen& shown_;
    ScaledPointer pointer_;
    std::vector<XEvent> events_;
};

} // namespace vcc::platform
