#include "platform/display_events.h"

#include <allegro.h>
#include <xalleg.h>

#include <initializer_list>

namespace vcc::platform {

// The library's thread uses the same connection: while the screen is ours, it waits.
void take_display_events() {
    if (!_xwin.display || !screen)
        return;
    acquire_screen();
    if (XPending(_xwin.display) > 0)
        _xwin_handle_input();
    release_screen();
}

} // namespace vcc::platform
