#include "platform/keyboard_focus.h"

#include <allegro.h>
#include <xalleg.h>

#include <initializer_list>

namespace vcc::platform {

// The library's thread uses the same connection: it is locked out meanwhile.
void take_keyboard_focus() {
    if (!_xwin.display)
        return;
    XLOCK(); // NOLINT(clang-diagnostic-deprecated-volatile)
    XWindowAttributes attributes;
    // Asking for a window that is not (or no longer) shown would end the program.
    if (XGetWindowAttributes(_xwin.display, _xwin.window, &attributes) && attributes.map_state == IsViewable)
        XSetInputFocus(_xwin.display, _xwin.window, RevertToParent, CurrentTime);
    XFlush(_xwin.display);
    XUNLOCK(); // NOLINT(clang-diagnostic-deprecated-volatile)
}

} // namespace vcc::platform
