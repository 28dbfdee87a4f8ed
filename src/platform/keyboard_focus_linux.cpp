#include "platform/keyboard_focus.h"

#include <allegro.h>
#include <xalleg.h>

#include <initializer_list>

namespace vcc::platform {

void take_keyboard_focus() {
    if (!_xwin.display)
        return;
    XLOCK();
    XWindowAttributes attributes;
    // Asking for a window that is not (or no longer) shown would end the program.
    if (XGetWindowAttributes(_xwin.display, _xwin.window, &attributes) && attributes.map_state == IsViewable)
        XSetInputFocus(_xwin.display, _xwin.window, RevertToParent, CurrentTime);
    XFlush(_xwin.display);
    XUNLOCK();
}

} // namespace vcc::platform
