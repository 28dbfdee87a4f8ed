// The library's own windows, if the picture is not scaled.
#include "x11/display.h"
#include "x11/reminder.h"
#include "x11/x_library.h"

#include <algorithm>
#include <array>

#include <sys/ipc.h>
#include <sys/shm.h>

namespace vcc::platform {

namespace {

using Clock = Reminder::Clock;
constexpr std::chrono::seconds settling{1}; ///< of the window manager after a change of mode

void (*show_part)(int x, int y, int width, int height);
Reminder reminder;
bool full_screen = false;
Clock::time_point changed{}; ///< from the window to full screen or back

bool has_keyboard() {
    Window focus = None;
    int revert_to = 0;
    XGetInputFocus(_xwin.display, &focus, &revert_to);
    return std::ranges::count(std::array{_xwin.window, _xwin.wm_window, _xwin.fs_window}, focus) != 0;
}

/// Window managers ignore the library's full-screen window: they give the keyboard to another one when the program's
/// window disappears, or to none when it comes back. In full screen the library takes all keys and clicks, so they are
/// meant for the program whatever window has the keyboard.
void keep_keyboard() {
    const bool full = gfx_driver->id == GFX_XWINDOWS_FULLSCREEN;
    const Clock::time_point now = Clock::now();
    if (full != full_screen)
        changed = now;
    full_screen = full;
    const bool wanted = now < changed + settling || (full && (keypressed() != 0 || mouse_b != 0));
    if (wanted && !has_keyboard())
        focus_if_viewable(full ? _xwin.window : _xwin.wm_window);
}

// The library calls these with its lock held.

void redraw(int x, int y, int width, int height) {
    show_part(x, y, width, height);
    reminder.drawn();
}

void read_events() {
    wake_late_at_rest(late_turn_ms);
    if (!_xwin.display)
        return;
    read_library_events();
    if (!gfx_driver || !_xwin.ximage)
        return;
    keep_keyboard();
    if (full_screen)
        keep_awake();
    if (reminder.due())
        show_part(0, 0, _xwin.screen_width, _xwin.screen_height);
    XFlush(_xwin.display);
}

/// A button's release is lost with its window, and the library would then ignore the next press.
void release_buttons() {
    Window root = None, child = None;
    int root_x = 0, root_y = 0, x = 0, y = 0;
    unsigned held = 0;
    XQueryPointer(_xwin.display, _xwin.window, &root, &child, &root_x, &root_y, &x, &y, &held);
    for (const int button : {Button1, Button2, Button3}) {
        XEvent release{};
        release.type = ButtonRelease;
        release.xbutton.button = static_cast<unsigned>(button);
        if ((held & unsigned{Button1Mask} << (button - Button1)) == 0)
            XPutBackEvent(_xwin.display, &release);
    }
}

bool refused; ///< shared memory, for the open screen

template <int id>
BITMAP* open_screen(int w, int h, int vw, int vh, int depth) {
    const DisplayLock lock;
    const RequestTrap trap;
    BITMAP* const bitmap = _xwin_create_screen(&driver<id>, w, h, vw, vh, depth, id == GFX_XWINDOWS_FULLSCREEN);
    if (!bitmap)
        return nullptr;
    refused = trap.refused();
    if (refused)
        _xwin.use_shm = 0; // the image stays in place, but is sent
    correct_colours();
    release_buttons();
    return bitmap;
}

void close_screen(BITMAP*) {
    const DisplayLock lock;
    _xwin_destroy_screen();
    if (!refused)
        return;
    ::shmdt(_xwin.shminfo.shmaddr);
    ::shmctl(_xwin.shminfo.shmid, IPC_RMID, nullptr);
}

template <int id>
void tend(GFX_DRIVER& ours) {
    ours.init = open_screen<id>;
    ours.exit = close_screen;
}

} // namespace

void tend_library_windows() {
    show_part = _xwin_window_redrawer;
    _xwin_window_redrawer = redraw;
    _xwin_input_handler = read_events;
    put_before<GFX_XWINDOWS>(tend<GFX_XWINDOWS>);
    put_before<GFX_XWINDOWS_FULLSCREEN>(tend<GFX_XWINDOWS_FULLSCREEN>);
}

} // namespace vcc::platform
