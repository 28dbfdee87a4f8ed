#include "platform/desktop_window.h"

#include "platform/desktop.h"

#include <X11/Xatom.h>
#include <chrono>
#include <thread>

namespace vcc::platform {

namespace {

constexpr Size smallest{400, 300};
constexpr int longest_wait_ms = 500;

Atom atom(const char* name) {
    return XInternAtom(_xwin.display, name, False);
}

void move_and_resize(const Area& area) {
    XMoveResizeWindow(_xwin.display, _xwin.wm_window, area.x1, area.y1, static_cast<unsigned>(area.x2 - area.x1),
                      static_cast<unsigned>(area.y2 - area.y1));
}

/// For a hidden window: sets the state in which it will appear.
void name_full_screen(bool wanted) {
    const Atom state = atom("_NET_WM_STATE_FULLSCREEN");
    if (wanted)
        XChangeProperty(_xwin.display, _xwin.wm_window, atom("_NET_WM_STATE"), XA_ATOM, 32, PropModeReplace,
                        reinterpret_cast<const unsigned char*>(&state), 1);
    else
        XDeleteProperty(_xwin.display, _xwin.wm_window, atom("_NET_WM_STATE"));
}

/// For a visible window.
void ask_for_full_screen(bool wanted) {
    constexpr long remove = 0, add = 1, from_program = 1;
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = _xwin.wm_window;
    event.xclient.message_type = atom("_NET_WM_STATE");
    event.xclient.format = 32;
    event.xclient.data.l[0] = wanted ? add : remove;
    event.xclient.data.l[1] = static_cast<long>(atom("_NET_WM_STATE_FULLSCREEN"));
    event.xclient.data.l[3] = from_program;
    XSendEvent(_xwin.display, XDefaultRootWindow(_xwin.display), False,
               SubstructureRedirectMask | SubstructureNotifyMask, &event);
}

} // namespace

void DesktopWindow::set_hints() const {
    XSizeHints hints{};
    hints.flags = PMinSize;
    hints.min_width = smallest.width;
    hints.min_height = smallest.height;
    XSetWMNormalHints(_xwin.display, _xwin.wm_window, &hints);
}

void DesktopWindow::show(Size picture, bool full_screen) {
    if (!placed_) {
        const int step = start_step(room_for_window(), picture);
        windowed_ = {0, 0, picture.width * step, picture.height * step};
        XResizeWindow(_xwin.display, _xwin.wm_window, static_cast<unsigned>(windowed_.x2),
                      static_cast<unsigned>(windowed_.y2));
        placed_ = true;
    }
    set_hints();
    XDefineCursor(_xwin.display, _xwin.wm_window, _xwin.cursor); // the hidden cursor, also beside the picture
    set_full_screen(full_screen);
    if (!shown_)
        XMapWindow(_xwin.display, _xwin.wm_window);
    shown_ = true;
}

void DesktopWindow::set_full_screen(bool wanted) {
    if (!wanted && !full_)
        return;
    if (wanted)
        managed_ = manager_shows_full_screen();
    full_ = wanted;
    if (managed_ && shown_) {
        ask_for_full_screen(wanted);
    } else if (managed_) {
        name_full_screen(wanted);
    } else if (wanted) {
        XSelectInput(_xwin.display, XDefaultRootWindow(_xwin.display), StructureNotifyMask);
        cover_desktop();
    } else {
        move_and_resize(windowed_);
    }
}

void DesktopWindow::cover_desktop() const {
    move_and_resize(whole_desktop());
    XRaiseWindow(_xwin.display, _xwin.wm_window);
}

void DesktopWindow::hide() {
    if (shown_)
        XWithdrawWindow(_xwin.display, _xwin.wm_window, _xwin.screen);
    shown_ = false;
}

Size DesktopWindow::size_on_screen() const {
    XWindowAttributes attributes;
    for (int waited_ms = 0;; ++waited_ms) {
        XGetWindowAttributes(_xwin.display, _xwin.wm_window, &attributes);
        if (attributes.map_state == IsViewable || waited_ms == longest_wait_ms)
            return {attributes.width, attributes.height};
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

void DesktopWindow::configured(const XConfigureEvent& event) {
    const bool unmanaged_full = full_ && !managed_;
    if (event.window == _xwin.wm_window && !full_)
        windowed_ = {event.x, event.y, event.x + event.width, event.y + event.height};
    else if (event.window == XDefaultRootWindow(_xwin.display) && unmanaged_full)
        cover_desktop(); // a monitor was added or removed
}

WindowStandIn::WindowStandIn() : managed_(_xwin.wm_window), picture_(_xwin.window) {
    // Windows inside an unmapped one stay invisible when mapped.
    const auto make = [](Window parent) {
        XSetWindowAttributes attributes{};
        attributes.event_mask = StructureNotifyMask; // the library waits for the window to be mapped
        return XCreateWindow(_xwin.display, parent, 0, 0, 1, 1, 0, CopyFromParent, InputOnly, CopyFromParent,
                             CWEventMask, &attributes);
    };
    hidden_ = make(XDefaultRootWindow(_xwin.display));
    _xwin.wm_window = make(hidden_);
    _xwin.window = make(_xwin.wm_window);
}

WindowStandIn::~WindowStandIn() {
    XDestroyWindow(_xwin.display, hidden_);
    _xwin.wm_window = managed_;
    _xwin.window = picture_;
}

} // namespace vcc::platform
