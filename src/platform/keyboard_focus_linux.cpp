#include "platform/keyboard_focus.h"

#include <allegro.h>
#include <xalleg.h>

#include <initializer_list>

namespace vcc::platform {

// The library's thread uses the same connection: while the screen is ours, it waits.
void take_keyboard_focus() {
    if (!_xwin.display || !screen)
        return;
    acquire_screen();
    XWindowAttributes attributes;
    // Asking for a window that is not (or no longer) shown would end the program.
    if (XGetWindowAttributes(_xwin.display, _xwin.window, &attributes) && attributes.map_state == IsViewable)
        XSetInputFocus(_xwin.display, _xwin.window, RevertToParent, CurrentTime);
    XFlush(_xwin.display);
    release_screen();
}

} // namespace vcc::platform
