#include "x11/desktop_window.h"

#include "x11/desktop.h"

#include <X11/Xatom.h>
#include <algorithm>
#include <array>
#include <chrono>
#include <thread>
#include <vector>

namespace vcc::platform {

namespace {

constexpr Size smallest{400, 300};
constexpr int longest_wait_ms = 500;
constexpr const char* full_screen_state = "_NET_WM_STATE_FULLSCREEN";
constexpr std::array maximised_states{"_NET_WM_STATE_MAXIMIZED_VERT", "_NET_WM_STATE_MAXIMIZED_HORZ"};

Atom atom(const char* name) {
    return XInternAtom(_xwin.display, name, False);
}

void move_and_resize(const Area& area) {
    XMoveResizeWindow(_xwin.display, _xwin.wm_window, area.x1, area.y1, static_cast<unsigned>(area.x2 - area.x1),
                      static_cast<unsigned>(area.y2 - area.y1));
}

/// For a hidden window: sets the states in which it will appear.
void name_states(bool full_screen, bool maximised) {
    std::vector<Atom> states;
    if (full_screen)
        states.push_back(atom(full_screen_state));
    if (maximised)
        states.insert(states.end(), {atom(maximised_states[0]), atom(maximised_states[1])});
    XChangeProperty(_xwin.display, _xwin.wm_window, atom("_NET_WM_STATE"), XA_ATOM, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(states.data()), static_cast<int>(states.size()));
}

/// For a visible window: asks the window manager to change one or two of its states.
void ask_for_state(bool wanted, const char* first, const char* second = nullptr) {
    constexpr long remove = 0, add = 1, from_program = 1;
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = _xwin.wm_window;
    event.xclient.message_type = atom("_NET_WM_STATE");
    event.xclient.format = 32;
    event.xclient.data.l[0] = wanted ? add : remove;
    event.xclient.data.l[1] = static_cast<long>(atom(first));
    event.xclient.data.l[2] = second ? static_cast<long>(atom(second)) : 0;
    event.xclient.data.l[3] = from_program;
    XSendEvent(_xwin.display, XDefaultRootWindow(_xwin.display), False,
               SubstructureRedirectMask | SubstructureNotifyMask, &event);
}

void ask_for_maximised(bool wanted) {
    ask_for_state(wanted, maximised_states[0], maximised_states[1]);
}

bool has_state(const char* name) {
    return std::ranges::count(window_property(_xwin.wm_window, "_NET_WM_STATE", XA_ATOM), atom(name)) != 0;
}

bool is_maximised() {
    return std::ranges::all_of(maximised_states, has_state);
}

} // namespace

void DesktopWindow::set_hints(bool with_place) const {
    XSizeHints hints{};
    hints.flags = PMinSize;
    hints.min_width = smallest.width;
    hints.min_height = smallest.height;
    if (with_place) {
        hints.flags |= USPosition | PWinGravity;
        hints.win_gravity = StaticGravity; // the place is the picture's, not the frame's
    }
    XSetWMNormalHints(_xwin.display, _xwin.wm_window, &hints);
}

void DesktopWindow::open(Size picture, bool full_screen) {
    const bool placed = !first_.area.empty();
    if (windowed_.empty())
        set_first_size(picture);
    // A window that starts in full screen gets its place later, when nothing places it any more.
    set_hints(!visible_ && (full_screen || placed));
    XDefineCursor(_xwin.display, _xwin.wm_window, _xwin.cursor); // the hidden cursor, also beside the picture
    set_full_screen(full_screen);
    open_ = true;
}

void DesktopWindow::set_first_size(Size picture) {
    const Area room = room_for_window();
    Area wanted = first_.area;
    if (wanted.empty()) {
        const Size size = first_size(room.size(), picture, desktop_scale(), fit_);
        wanted = {room.x2, room.y2, room.x2 + size.width, room.y2 + size.height}; // not yet placed
    }
    first_.area = windowed_ = fitted_place(wanted, room, first_.area.empty() ? room : whole_desktop());
    move_and_resize(windowed_);
    XWindowAttributes attributes;
    XGetWindowAttributes(_xwin.display, _xwin.wm_window, &attributes);
    XSelectInput(_xwin.display, _xwin.wm_window, attributes.your_event_mask | PropertyChangeMask);
    name_states(false, first_.maximised);
}

void DesktopWindow::reveal() {
    XMapWindow(_xwin.display, _xwin.wm_window);
    visible_ = true;
    started_full_ = full_;
    if (full_ && !managed_) {
        size();
        focus_if_viewable(_xwin.wm_window);
    }
}

void DesktopWindow::set_full_screen(bool wanted) {
    if (!wanted && !full_ && !asked_)
        return;
    managed_ = manager_shows_full_screen() && (wanted || !visible_ || has_state(full_screen_state) || asked_);
    full_ = wanted;
    if (managed_ && visible_) {
        ask_for_full_screen(wanted);
    } else if (managed_) {
        name_states(wanted, first_.maximised && !wanted);
        was_maximised_ = first_.maximised;
    } else if (wanted) {
        XSelectInput(_xwin.display, XDefaultRootWindow(_xwin.display), StructureNotifyMask);
        cover_desktop();
    } else {
        move_and_resize(windowed_);
    }
}

// Not every window manager lets a maximised window cover the desktop's bars.
void DesktopWindow::ask_for_full_screen(bool wanted) {
    if (wanted && !asked_)
        was_maximised_ = is_maximised();
    if (wanted && was_maximised_)
        ask_for_maximised(false);
    ask_for_state(wanted, full_screen_state);
    if (!wanted && was_maximised_)
        ask_for_maximised(true);
    asked_ = true;
}

void DesktopWindow::cover_desktop() const {
    move_and_resize(whole_desktop());
    XRaiseWindow(_xwin.display, _xwin.wm_window);
}

void DesktopWindow::hide() {
    if (visible_)
        XWithdrawWindow(_xwin.display, _xwin.wm_window, _xwin.screen);
    open_ = visible_ = false;
}

Size DesktopWindow::size() const {
    XWindowAttributes attributes;
    for (int waited_ms = 0;; ++waited_ms) {
        XGetWindowAttributes(_xwin.display, _xwin.wm_window, &attributes);
        if (!visible_ || attributes.map_state == IsViewable || waited_ms == longest_wait_ms)
            return {attributes.width, attributes.height};
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

WindowPlace DesktopWindow::place() const {
    if (full_)
        return {{}, was_maximised_};
    if (is_maximised())
        return {{}, true};
    const Size now = size();
    int x = 0, y = 0;
    Window child = None;
    XTranslateCoordinates(_xwin.display, _xwin.wm_window, XDefaultRootWindow(_xwin.display), 0, 0, &x, &y, &child);
    return {{x, y, x + now.width, y + now.height}, false};
}

void DesktopWindow::configured(const XConfigureEvent& event) {
    const bool unmanaged_full = full_ && !managed_;
    if (event.window == _xwin.wm_window && !full_)
        windowed_ = {event.x, event.y, event.x + event.width, event.y + event.height};
    else if (event.window == XDefaultRootWindow(_xwin.display) && unmanaged_full)
        cover_desktop(); // a monitor was added or removed
}

/// A window manager has taken the window, or has ended.
void DesktopWindow::reparented() {
    if (!full_ || !visible_ || managed_ == manager_shows_full_screen())
        return;
    set_full_screen(true);
    started_full_ = managed_; // for this manager
    first_.area = windowed_;
}

void DesktopWindow::property_changed(const XPropertyEvent& event) {
    if (event.window != _xwin.wm_window || event.atom != atom("_NET_WM_STATE") || !visible_)
        return;
    const bool full = has_state(full_screen_state);
    if (asked_ && full != full_)
        return; // it answers to something else
    asked_ = false;
    managed_ = managed_ || full;
    if (managed_)
        full_ = full;
    if (started_full_ && !full_ && !was_maximised_)
        move_and_resize(first_.area); // not every window manager has a place for a window that it never saw
    started_full_ = started_full_ && full_;
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
