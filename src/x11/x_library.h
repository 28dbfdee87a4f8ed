// The graphics library's X11 side: its state, and functions that it exports without declaring them. Only for the
// *_linux.cpp files of this folder.
#pragma once

#include "x11/picture_place.h"

#include <allegro.h>
#include <xalleg.h>

#include <vector>

extern "C" {
BITMAP* _xwin_create_screen(GFX_DRIVER* driver, int w, int h, int vw, int vh, int depth, int fullscreen);
void _xwin_destroy_screen(void);
void _xwin_vsync(void);
void _xwin_lock(BITMAP* bitmap);
void _xwin_unlock(BITMAP* bitmap);
void _xwin_keyboard_handler(XKeyEvent* event, int dga2_hack);
void _xwin_keyboard_focus_handler(XFocusChangeEvent* event);
void _xwin_get_keyboard_mapping(void);
void _xwin_mouse_leave_notify(void);
void _xwin_mouse_enter_notify(void);
extern int _xwin_mouse_extended_range;
}

namespace vcc::platform {

/// While it lives, the library's thread does not use the connection to the display. Can be nested.
class DisplayLock {
public:
    DisplayLock() { _xwin_lock(nullptr); }
    ~DisplayLock() { _xwin_unlock(nullptr); }
    DisplayLock& operator=(DisplayLock&&) = delete;
};

Atom atom(const char* name);

XWindowAttributes attributes_of(Window window);

/// Sets a property of the program's window to numbers or atoms.
void set_property(const char* name, Atom type, const std::vector<unsigned long>& values);

/// Gives an open screen its true colours on a desktop of 15 bits: the library converts other depths to 16. Needs the
/// lock.
void correct_colours();

void move_and_resize(Window window, const Area& area);

/// The library's own driver with a GFX_ number, or null.
const GFX_DRIVER* library_driver(int id);

/// Our copy of the library's driver with a GFX_ number.
template <int id>
inline GFX_DRIVER driver;

/// Registers the copy, changed by `change`, before the library's; does nothing if that is missing.
template <int id>
void put_before(void (*change)(GFX_DRIVER& ours)) {
    if (const GFX_DRIVER* const library = library_driver(id)) {
        change(driver<id> = *library);
        _unix_register_gfx_driver(id, &driver<id>, TRUE, TRUE);
    }
}

/// For wake_late_at_rest() in the library's thread: it then sleeps once per turn of 10 ms instead of twice.
constexpr int late_turn_ms = 9;

/// Reads the display's events as the library does, without asking the server for an answer each time. Needs the lock.
void read_library_events();

/// Gives a window the keyboard, unless it is invisible: that error would end the program.
void focus_if_viewable(Window window);

/// Keeps the screen saver off, if called often: the display server does not see pads and films as input.
void keep_awake();

/// If the picture is not scaled: gives the library's own windows what they lack on a desktop. A display server that
/// offers shared memory but refuses it does not end the program; the pictures are sent to it instead. Call before the
/// first mode is set, with the lock.
void tend_library_windows();

/// If the picture is scaled: shows new drawing now instead of within 10 ms; the first one brings up the window.
/// Needs the lock.
void show_scaled_drawing();

/// Whether a window manager asks if the program is alive; in the form that the X library asks for.
int is_ping(Display*, XEvent* event, char*);
void answer_ping(XEvent event);

/// While it lives, a request that the display server refuses does not end the program. Needs the lock.
class RequestTrap {
public:
    RequestTrap();
    ~RequestTrap();
    RequestTrap& operator=(RequestTrap&&) = delete;

    /// Waits for the server; true if it has refused a request.
    bool refused() const;

private:
    XErrorHandler before_;
};

} // namespace vcc::platform
