#include "x11/desktop.h"

#include "platform/shared_library.h"
#include "x11/x_library.h"

#include <algorithm>
#include <cstdlib>
#include <span>
#include <vector>

#include <X11/Xatom.h>

namespace vcc::platform {

std::vector<unsigned long> window_property(Window window, const char* name, Atom wanted_type) {
    constexpr long longest = 4096;
    Atom type = None;
    int format = 0;
    unsigned long count = 0, left = 0;
    unsigned char* data = nullptr;
    std::vector<unsigned long> values;
    if (XGetWindowProperty(_xwin.display, window, XInternAtom(_xwin.display, name, False), 0, longest, False,
                           wanted_type, &type, &format, &count, &left, &data) == Success &&
        data) {
        if (type == wanted_type && format == 32)
            values.assign(reinterpret_cast<unsigned long*>(data), reinterpret_cast<unsigned long*>(data) + count);
        XFree(data);
    }
    return values;
}

namespace {

std::vector<unsigned long> root_property(const char* name, Atom wanted_type) {
    return window_property(XDefaultRootWindow(_xwin.display), name, wanted_type);
}

/// As libXinerama declares it.
struct Monitor {
    int number;
    short x, y, width, height;
};

/// The monitors, from a library loaded only for this: linked, it would slow down every start. It is never closed,
/// because the connection to the display keeps functions of it.
std::span<Monitor> monitors() {
    static const SharedLibrary& library = *new SharedLibrary(load_system_library("Xinerama", 1));
    const auto query = reinterpret_cast<Monitor* (*)(Display*, int*)>(library.symbol("XineramaQueryScreens"));
    int count = 0;
    Monitor* const first = query ? query(_xwin.display, &count) : nullptr;
    return {first, first ? static_cast<std::size_t>(std::max(count, 0)) : 0};
}

Area monitor_with_pointer(const Area& desktop) {
    Window window = None;
    int x = 0, y = 0, ignored = 0;
    unsigned state = 0;
    XQueryPointer(_xwin.display, XDefaultRootWindow(_xwin.display), &window, &window, &x, &y, &ignored, &ignored,
                  &state);
    Area found = desktop;
    const std::span<Monitor> all = monitors();
    for (const Monitor& monitor : all) {
        const Area area{monitor.x, monitor.y, monitor.x + monitor.width, monitor.y + monitor.height};
        if (area.x1 <= x && x < area.x2 && area.y1 <= y && y < area.y2)
            found = area;
    }
    if (!all.empty())
        XFree(all.data());
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

} // namespace

Area whole_desktop() {
    XWindowAttributes root;
    XGetWindowAttributes(_xwin.display, XDefaultRootWindow(_xwin.display), &root);
    return {0, 0, root.width, root.height};
}

Area room_for_window() {
    const Area desktop = whole_desktop();
    const Area monitor = monitor_with_pointer(desktop);
    const Area free = shared(monitor, work_area(desktop));
    return free.empty() ? monitor : free; // a window manager may report anything
}

double desktop_scale() {
    constexpr double usual_dots_per_inch = 96;
    const char* const dots_per_inch = XGetDefault(_xwin.display, "Xft", "dpi");
    return dots_per_inch ? std::atof(dots_per_inch) / usual_dots_per_inch : 1;
}

bool manager_shows_full_screen() {
    XWindowAttributes root;
    XGetWindowAttributes(_xwin.display, XDefaultRootWindow(_xwin.display), &root);
    const bool running = root.all_event_masks & SubstructureRedirectMask; // one that was killed leaves its properties
    const Atom wanted = XInternAtom(_xwin.display, "_NET_WM_STATE_FULLSCREEN", False);
    return running && std::ranges::count(root_property("_NET_SUPPORTED", XA_ATOM), wanted) != 0;
}

} // namespace vcc::platform
