#include "x11/display.h"

#include "x11/desktop_window.h"
#include "x11/scaled_pointer.h"
#include "x11/shared_image.h"
#include "x11/shown_screen.h"
#include "x11/x_library.h"

namespace vcc::platform {

namespace {

// Turns of 10 ms. A window without a screen waits for the next mode, which may never come; a new one for its first
// picture, which only this program announces.
constexpr int turns_without_screen = 30, turns_without_picture = 30;
constexpr int most_events = 200; ///< per call

struct ScaledDisplay {
    ScaledDisplay(Fit fit, const WindowPlace& first) : window(fit, first), shown(fit, _xwin_window_redrawer) {}

    DesktopWindow window;
    ShownScreen shown;
    ScaledPointer pointer{shown};
    bool trouble_told = false;
    int turns = 0; ///< since the latest screen was opened or closed

    void reveal() {
        window.reveal();
        shown.lay_out(window.size());
    }
    Size take_events();
    void handle(XEvent& event, Size& size);
};

/// Never deleted, because the library keeps our functions.
ScaledDisplay* display;

/// A held key repeats as a release and a press at the same time; for the library the key stays down.
bool is_repeat(const XEvent& event) {
    if (event.type != KeyRelease || XPending(_xwin.display) == 0)
        return false;
    XEvent next;
    XPeekEvent(_xwin.display, &next);
    return next.type == KeyPress && event.xkey.keycode == next.xkey.keycode && event.xkey.time == next.xkey.time;
}

/// Passes all waiting events on to the library, the window, the picture or the pointer: left to itself, the library
/// would take them for events of a window of its own size. Returns the window's latest size.
Size ScaledDisplay::take_events() {
    Size size = shown.window();
    if (shown.is_open())
        pointer.tick();
    for (int count = 0; count < most_events && XPending(_xwin.display) > 0; ++count) {
        XEvent event;
        XNextEvent(_xwin.display, &event);
        if (!is_repeat(event))
            handle(event, size);
    }
    return size;
}

void ScaledDisplay::handle(XEvent& event, Size& size) {
    switch (event.type) {
    case KeyPress:
    case KeyRelease:
        _xwin_keyboard_handler(&event.xkey, FALSE);
        break;
    case FocusIn:
        _switch_in();
        _xwin_keyboard_focus_handler(&event.xfocus);
        break;
    case FocusOut:
        _switch_out();
        _xwin_keyboard_focus_handler(&event.xfocus);
        break;
    case ButtonPress:
    case ButtonRelease:
        pointer.button(event.xbutton, event.type == ButtonPress);
        break;
    case MotionNotify:
        if (shown.is_open())
            pointer.moved(event.xmotion);
        break;
    case EnterNotify:
        if (shown.is_open())
            pointer.entered(event.xcrossing);
        break;
    case LeaveNotify:
        pointer.left(event.xcrossing);
        break;
    case Expose:
        if (shown.is_open() && event.xexpose.window == _xwin.window)
            shown.uncovered({event.xexpose.x, event.xexpose.y, event.xexpose.x + event.xexpose.width,
                             event.xexpose.y + event.xexpose.height});
        break;
    case ConfigureNotify:
        window.configured(event.xconfigure);
        if (event.xconfigure.window == _xwin.wm_window)
            size = {event.xconfigure.width, event.xconfigure.height};
        break;
    case ReparentNotify:
        window.reparented();
        break;
    case PropertyNotify:
        window.property_changed(event.xproperty);
        break;
    case MappingNotify:
        if (event.xmapping.request == MappingKeyboard)
            _xwin_get_keyboard_mapping();
        break;
    case ClientMessage:
        if (is_ping(_xwin.display, &event, nullptr))
            answer_ping(event);
        else if (static_cast<Atom>(event.xclient.data.l[0]) == atom("WM_DELETE_WINDOW") && _xwin.close_button_callback)
            _xwin.close_button_callback();
        break;
    default:
        break;
    }
}

// The library calls these with its lock held.

void redraw(int x, int y, int width, int height) {
    display->shown.changed({x, y, x + width, y + height});
}

void read_events() {
    wake_late_at_rest(late_turn_ms);
    if (!_xwin.display)
        return;
    if (!display->window.is_open()) { // the library's own driver may be in use
        read_library_events();
        return;
    }
    const Size size = display->take_events();
    ++display->turns;
    if (!display->shown.is_open()) {
        if (display->turns > turns_without_screen)
            display->window.hide();
    } else if (!display->window.is_visible()) {
        if (display->turns > turns_without_picture)
            display->reveal();
    } else if (size != display->shown.window()) {
        display->shown.lay_out(size);
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

template <int id>
BITMAP* open_screen(int w, int h, int vw, int vh, int depth) {
    const DisplayLock lock;
    display->window.open({w, h}, id == GFX_XWINDOWS_FULLSCREEN);
    BITMAP* bitmap = nullptr;
    {
        const WindowStandIn stand_in;
        bitmap = _xwin_create_screen(&driver<id>, w, h, vw, vh, depth, FALSE);
    }
    if (!bitmap) { // the library tries its own driver next
        display->window.hide();
        XMoveWindow(_xwin.display, _xwin.window, 0, 0);
        XSetWindowBackground(_xwin.display, _xwin.window, BlackPixel(_xwin.display, _xwin.screen));
        return nullptr;
    }
    correct_colours();
    draw_in_memory_only();
    display->shown.open(display->window.size());
    display->turns = 0;
    return bitmap;
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

template <int id>
void scale(GFX_DRIVER& ours) {
    ours.init = open_screen<id>;
    ours.exit = close_screen;
    ours.vsync = show_and_wait;
    ours.drawing_mode = draw_in_memory_only;
    ours.set_mouse_sprite = refuse_sprite; // is part of the picture; a module may ask for the server's own cursors
    ours.hide_mouse = hide_pointer;
}

/// Why the picture cannot be scaled on this display; empty if it can.
std::string obstacle() {
    if (!library_driver(GFX_XWINDOWS) || !library_driver(GFX_XWINDOWS_FULLSCREEN))
        return "the graphics library has no drivers for this display";
    if (!is_scalable(display_format()))
        return "the desktop's colours are not of 15, 16 or 24 bits";
    if (!XShmQueryExtension(_xwin.display))
        return "the display server has no shared memory";
    if (!SharedRows::create(1, 1))
        return "the display server refuses shared memory";
    return {};
}

} // namespace

std::string show_scaled(Fit fit, const WindowPlace& first) {
    if (display || !system_driver || system_driver->id != SYSTEM_XWINDOWS)
        return {};
    const DisplayLock lock;
    std::string reason = fit == Fit::none ? "" : obstacle();
    if (fit == Fit::none || !reason.empty()) {
        tend_library_windows();
        return reason;
    }
    display = new ScaledDisplay(fit, first);
#ifdef ALLEGRO_XWINDOWS_WITH_XCURSOR
    _xwin.support_argb_cursor = 0; // the library would place the server's pointer by the picture's own pixels
#endif
    _xwin_window_redrawer = redraw;
    _xwin_input_handler = read_events;
    put_before<GFX_XWINDOWS>(scale<GFX_XWINDOWS>);
    put_before<GFX_XWINDOWS_FULLSCREEN>(scale<GFX_XWINDOWS_FULLSCREEN>);
    return {};
}

std::string scaled_display_trouble() {
    if (!display || !display->shown.lacks_memory() || display->trouble_told)
        return {};
    display->trouble_told = true;
    return "There is no memory to show the picture at its window's size";
}

void show_scaled_drawing() {
    if (!display)
        return;
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
