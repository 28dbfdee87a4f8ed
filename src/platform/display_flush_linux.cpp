#include "platform/display_flush.h"

#include <allegro.h>
#include <xalleg.h>

#include <initializer_list>

namespace vcc::platform {

// The library leaves its requests in the client's queue until its thread next reads events, up to 10 ms later. vsync()
// empties the queue as well, but then sleeps until the next turn of its 70 Hz counter. That thread uses the same
// connection: while the screen is ours, it waits.
void flush_display() {
    if (!_xwin.display || !screen)
        return;
    acquire_screen();
    XFlush(_xwin.display);
    release_screen();
}

} // namespace vcc::platform
