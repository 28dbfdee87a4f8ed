#include "x11/unshared_display.h"

#include "x11/x_library.h"

#include <sys/ipc.h>
#include <sys/shm.h>

namespace vcc::platform {

namespace {

GFX_DRIVER window_driver, full_screen_driver;
bool refused; ///< for the open screen

BITMAP* open_guarded(int id, int w, int h, int vw, int vh, int depth) {
    const DisplayLock lock;
    const RequestTrap trap;
    BITMAP* const bitmap = library_driver(id)->init(w, h, vw, vh, depth);
    refused = bitmap && trap.refused();
    if (refused)
        _xwin.use_shm = 0; // the image stays in place, but is sent
    return bitmap;
}

BITMAP* open_window(int w, int h, int vw, int vh, int depth) {
    return open_guarded(GFX_XWINDOWS, w, h, vw, vh, depth);
}
BITMAP* open_full_screen(int w, int h, int vw, int vh, int depth) {
    return open_guarded(GFX_XWINDOWS_FULLSCREEN, w, h, vw, vh, depth);
}

void close_guarded(BITMAP* bitmap) {
    const DisplayLock lock;
    gfx_driver->windowed ? library_driver(GFX_XWINDOWS)->exit(bitmap)
                         : library_driver(GFX_XWINDOWS_FULLSCREEN)->exit(bitmap);
    if (!refused)
        return;
    ::shmdt(_xwin.shminfo.shmaddr);
    ::shmctl(_xwin.shminfo.shmid, IPC_RMID, nullptr);
}

void guard(GFX_DRIVER& ours, int id, BITMAP* (*open)(int, int, int, int, int)) {
    ours = *library_driver(id);
    ours.init = open;
    ours.exit = close_guarded;
    register_driver(ours);
}

} // namespace

void guard_library_drivers() {
    guard(window_driver, GFX_XWINDOWS, open_window);
    guard(full_screen_driver, GFX_XWINDOWS_FULLSCREEN, open_full_screen);
}

} // namespace vcc::platform
