#include "x11/desktop_window.h"

#include "platform/shared_library.h"

#include <X11/Xatom.h>
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <thread>
#include <vector>

namespace vcc::platform {

namespace {

constexpr Size smallest{400, 300};
constexpr int longest_wait_ms = 500;
constexpr const char* full_screen_state = "_NET_WM_STATE_FULLSCREEN";
constexpr std::array maximised_states{"_NET_WM_STATE_MAXIMIZED_VERT", "_NET_WM_STATE_MAXIMIZED_HORZ"};

/// A window's numbers or atoms of that name; empty if there are none.
std::vector<unsigned long> window_property(Window window, const char* name, Atom wanted_type) {
    constexpr long longest = 4096;
    Atom type = None;
    int format = 0;
    unsigned long count = 0, left = 0;
    unsigned char* data = nullptr;
    std::vector<unsigned long> values;
    if (XGetWindowProperty(_xwin.display, window, atom(name), 0, longest, False, wanted_type, &type, &format, &count,
                           &left, &data) == Success &&
        data) {
        if (type == wanted_type && format == 32)
            values.assign(reinterpret_cast<unsigned long*>(data), reinterpret_cast<unsigned long*>(data) + count);
        XFree(data);
    }
    return values;
}

std::vector<unsigned long> root_property(const char* name, Atom wanted_type) {
    return window_property(XDefaultRootWindow(_xwin.display), name, wanted_type);
}

/// As libXinerama declares it.
struct Monitor {
    int number;
    short x, y, width, height;
};

/// The monitor under the pointer, from a library loaded only for this: linked, it would slow down every start. It is
/// never closed, because the connection to the display keeps functions of it.
Area monitor_with_pointer(const Area& desktop) {
    static const SharedLibrary& library = *new SharedLibrary(load_system_library("Xinerama", 1));
    const auto query = reinterpret_cast<Monitor* (*)(Display*, int*)>(library.symbol("XineramaQueryScreens"));
    int count = 0;
    Monitor* const monitors = query ? query(_xwin.display, &count) : nullptr;
    if (!monitors)
        return desktop;
    Window window = None;
    int x = 0, y = 0, ignored = 0;
    unsigned state = 0;
    XQueryPointer(_xwin.display, XDefaultRootWindow(_xwin.display), &window, &window, &x, &y, &ignored, &ignored,
                  &state);
    Area found = desktop;
    for (const Monitor* monitor = monitors; monitor < monitors + count; ++monitor) {
        const Area area{monitor->x, monitor->y, monitor->x + monitor->width, monitor->y + monitor->height};
        if (area.x1 <= x && x < area.x2 && area.y1 <= y && y < area.y2)
            found = area;
    }
    XFree(monitors);
    return found;
}

/// The desktop without its bars on the current workspace.
Area work_area(const Area& desktop) {
    const std::vector<unsigned long> areas = root_property("_NET_WORKAREA", XA_CARDINAL);
    const std::vector<unsigned long> current = root_property("_NET_CURRENT_DESKTOP", XA_CARDINAL);
    const std::size_t at = 4 * (current.empty() ? 0 : current.front());
    if (areas.size() < 4 || at > areas.size() - 4)
        return desktop;
    const auto number = [&](std::size_t i) { return static_cast<int>(areas[at + i]); };
    return {number(0), number(1), number(0) + number(2), number(1) + number(3)};
}

Area whole_desktop() {
    const XWindowAttributes root = attributes_of(XDefaultRootWindow(_xwin.display));
    return {0, 0, root.width, root.height};
}

/// Room for a new window: the monitor under the pointer without the desktop's bars.
Area room_for_window() {
    const Area desktop = whole_desktop();
    const Area monitor = monitor_with_pointer(desktop);
    const Area free = shared(monitor, work_area(desktop));
    return free.empty() ? monitor : free; // a window manager may report anything
}

/// The scale that the player has chosen for the desktop; 1 if none.
double desktop_scale() {
    constexpr double usual_dots_per_inch = 96;
    const char* const dots_per_inch = XGetDefault(_xwin.display, "Xft", "dpi");
    return dots_per_inch ? std::atof(dots_per_inch) / usual_dots_per_inch : 1;
}

/// Whether a window manager is running that can show a window full screen.
bool manager_shows_full_screen() {
    // A killed one leaves its properties behind.
    const bool running = attributes_of(XDefaultRootWindow(_xwin.display)).all_event_masks & SubstructureRedirectMask;
    return running && std::ranges::count(root_property("_NET_SUPPORTED", XA_ATOM), atom(full_screen_state)) != 0;
}

/// Sets the states in which a hidden window will appear.
void name_states(bool full_screen, bool maximised) {
    std::vector<Atom> states;
    if (full_screen)
        states.push_back(atom(full_screen_state));
    if (maximised)
        states.insert(states.end(), {atom(maximised_states[0]), atom(maximised_states[1])});
    set_property("_NET_WM_STATE", XA_ATOM, states);
}

/// Asks the window manager to change one or two states of a visible window.
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
    move_and_resize(_xwin.wm_window, windowed_);
    XSelectInput(_xwin.display, _xwin.wm_window, attributes_of(_xwin.wm_window).your_event_mask | PropertyChangeMask);
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
        move_and_resize(_xwin.wm_window, windowed_);
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
    move_and_resize(_xwin.wm_window, whole_desktop());
    XRaiseWindow(_xwin.display, _xwin.wm_window);
}

void DesktopWindow::hide() {
    if (visible_)
        XWithdrawWindow(_xwin.display, _xwin.wm_window, _xwin.screen);
    open_ = visible_ = false;
}

Size DesktopWindow::size() const {
    for (int waited_ms = 0;; ++waited_ms) {
        const XWindowAttributes attributes = attributes_of(_xwin.wm_window);
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
        move_and_resize(_xwin.wm_window,
                        first_.area); // not every window manager can place a window that it first saw in full screen
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
