#include "x11/scaled_display.h"

#include "x11/desktop_window.h"
#include "x11/scaled_events.h"
#include "x11/shared_image.h"
#include "x11/shown_screen.h"
#include "x11/unshared_display.h"
#include "x11/x_library.h"

#include <atomic>

namespace vcc::platform {

namespace {

// Turns of 10 ms. A window without a screen waits for the next mode, which may never come; a new one for its first
// picture, which only this program announces.
constexpr int turns_without_screen = 30, turns_without_picture = 30;

struct ScaledDisplay {
    ScaledDisplay(Fit fit, const WindowPlace& first)
        : window(fit, first), shown(fit, _xwin_window_redrawer), events(window, shown) {}

    DesktopWindow window;
    ShownScreen shown;
    ScaledEvents events;
    std::atomic<bool> out_of_memory = false;
    bool trouble_told = false;
    int turns = 0; ///< since the latest screen was opened or closed

    void note(bool laid_out) { out_of_memory = out_of_memory || !laid_out; }
    void reveal() {
        window.reveal();
        note(shown.lay_out(window.size()));
    }
};

/// Never deleted, because the library keeps our functions.
ScaledDisplay* display;

GFX_DRIVER window_driver, full_screen_driver;

// The library calls these with its lock held.

void redraw(int x, int y, int width, int height) {
    display->shown.changed({x, y, x + width, y + height});
}

void read_events() {
    if (!_xwin.display)
        return;
    if (!display->window.is_open()) { // the library's own driver may be in use
        read_library_events();
        return;
    }
    const Size size = display->events.read(display->shown.window());
    ++display->turns;
    if (!display->shown.is_open()) {
        if (display->turns > turns_without_screen)
            display->window.hide();
    } else if (!display->window.is_visible()) {
        if (display->turns > turns_without_picture)
            display->reveal();
    } else if (size != display->shown.window()) {
        display->note(display->shown.lay_out(size));
    }
    if (display->window.is_full())
        keep_awake();
    display->shown.present();
    XFlush(_xwin.display);
}

// The drivers.

/// If allowed, the library lets the server draw some shapes, at its own size and past everything here.
void draw_in_memory_only() {
    _xwin.drawing_mode_ok = FALSE;
}

BITMAP* open_screen(GFX_DRIVER& driver, Size size, Size virtual_size, int depth, bool full_screen) {
    const DisplayLock lock;
    display->window.open(size, full_screen);
    BITMAP* bitmap = nullptr;
    {
        const WindowStandIn stand_in;
        bitmap = _xwin_create_screen(&driver, size.width, size.height, virtual_size.width, virtual_size.height, depth,
                                     FALSE);
    }
    if (!bitmap) { // the library tries its own driver next
        display->window.hide();
        ShownScreen::give_back_window();
        return nullptr;
    }
    draw_in_memory_only();
    display->note(display->shown.open(display->window.size()));
    display->turns = 0;
    return bitmap;
}

BITMAP* open_window(int w, int h, int vw, int vh, int depth) {
    return open_screen(window_driver, {w, h}, {vw, vh}, depth, false);
}
BITMAP* open_full_screen(int w, int h, int vw, int vh, int depth) {
    return open_screen(full_screen_driver, {w, h}, {vw, vh}, depth, true);
}

void close_screen(BITMAP*) {
    const DisplayLock lock;
    display->shown.close();
    display->turns = 0;
    const WindowStandIn stand_in;
    _xwin_destroy_screen();
}

int refuse_sprite(BITMAP*, int, int) {
    return -1;
}

/// Hides the server's pointer again, which the library does only where it could also show sprites with it.
void hide_pointer() {
#ifdef ALLEGRO_XWINDOWS_WITH_XCURSOR
    const DisplayLock lock;
    _xwin.support_argb_cursor = 1;
    library_driver(GFX_XWINDOWS)->hide_mouse();
    _xwin.support_argb_cursor = 0;
#endif
}

void show_and_wait() {
    {
        const DisplayLock lock;
        display->shown.present();
    }
    _xwin_vsync();
}

/// Copies the library's driver, replaces some of its functions and registers it before the original.
void put_before(GFX_DRIVER& ours, int id, BITMAP* (*open)(int, int, int, int, int)) {
    ours = *library_driver(id);
    ours.init = open;
    ours.exit = close_screen;
    ours.vsync = show_and_wait;
    ours.drawing_mode = draw_in_memory_only;
    ours.set_mouse_sprite = refuse_sprite; // is part of the picture; a module may ask for the server's own cursors
    ours.hide_mouse = hide_pointer;
    register_driver(ours);
}

/// Why the picture cannot be scaled on this display; empty if it can.
std::string obstacle() {
    if (!library_driver(GFX_XWINDOWS) || !library_driver(GFX_XWINDOWS_FULLSCREEN))
        return "the graphics library has no drivers for this display";
    if (!is_scalable(display_format()))
        return "the desktop's colours are not of 15, 16 or 24 bits";
    switch (shared_memory()) {
    case SharedMemory::absent:
        return "the display server has no shared memory";
    case SharedMemory::refused:
        guard_library_drivers();
        return "the display server refuses shared memory";
    case SharedMemory::works:
        break;
    }
    return {};
}

} // namespace

std::string show_scaled(Fit fit, const WindowPlace& first) {
    if (display || !system_driver || system_driver->id != SYSTEM_XWINDOWS)
        return {};
    const DisplayLock lock;
    if (std::string reason = obstacle(); !reason.empty())
        return reason;
    display = new ScaledDisplay(fit, first);
#ifdef ALLEGRO_XWINDOWS_WITH_XCURSOR
    _xwin.support_argb_cursor = 0; // the library would place the server's pointer by the picture's own pixels
#endif
    _xwin_window_redrawer = redraw;
    _xwin_input_handler = read_events;
    put_before(window_driver, GFX_XWINDOWS, open_window);
    put_before(full_screen_driver, GFX_XWINDOWS_FULLSCREEN, open_full_screen);
    return {};
}

std::string scaled_display_trouble() {
    if (!display || !display->out_of_memory || display->trouble_told)
        return {};
    display->trouble_told = true;
    return "There is no memory to show the picture at its window's size";
}

void show_scaled_drawing() {
    if (!display)
        return;
    const DisplayLock lock;
    if (display->shown.is_open() && !display->window.is_visible())
        display->reveal();
    display->shown.present();
}

std::optional<bool> shown_in_full_screen() {
    if (!display || !display->window.is_open())
        return {};
    const DisplayLock lock;
    return display->window.is_full();
}

std::optional<WindowPlace> window_place() {
    if (!display || !display->window.is_visible())
        return {};
    const DisplayLock lock;
    return display->window.place();
}

} // namespace vcc::platform
