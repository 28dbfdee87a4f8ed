#include "x11/x_library.h"

#include <chrono>
#include <cstddef>

namespace vcc::platform {

namespace {

bool request_refused;

int note_refusal(Display*, XErrorEvent*) {
    request_refused = true;
    return 0;
}

void (*convert_to_16)(int x, int y, int width, int height);

void convert_to_15(int x, int y, int width, int height) {
    convert_to_16(x, y, width, height);
    GRAPHICS_RECT part{width, height, _xwin.ximage->bytes_per_line, _xwin.buffer_line[y] + std::ptrdiff_t{x} * 2};
    _colorconv_blit_16_to_15(&part, &part);
}

} // namespace

Atom atom(const char* name) {
    return XInternAtom(_xwin.display, name, False);
}

XWindowAttributes attributes_of(Window window) {
    XWindowAttributes attributes{};
    XGetWindowAttributes(_xwin.display, window, &attributes);
    return attributes;
}

void set_property(const char* name, Atom type, const std::vector<unsigned long>& values) {
    XChangeProperty(_xwin.display, _xwin.wm_window, atom(name), type, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(values.data()), static_cast<int>(values.size()));
}

void correct_colours() {
    constexpr int levels_of_5_bits = 32;
    if (!_xwin.screen_to_buffer || _xwin.fast_visual_depth != 16 || _xwin.gsize != levels_of_5_bits)
        return;
    convert_to_16 = _xwin.screen_to_buffer;
    _xwin.screen_to_buffer = convert_to_15;
}

void move_and_resize(Window window, const Area& area) {
    const auto [width, height] = area.size();
    XMoveResizeWindow(_xwin.display, window, area.x1, area.y1, static_cast<unsigned>(width),
                      static_cast<unsigned>(height));
}

const GFX_DRIVER* library_driver(int id) {
    for (const _DRIVER_INFO* row = _xwin_gfx_driver_list; row->driver; ++row)
        if (row->id == id)
            return static_cast<const GFX_DRIVER*>(row->driver);
    return nullptr;
}

void read_library_events() {
    const bool waiting = XPending(_xwin.display) > 0;
    if (waiting)
        for (XEvent ping; XCheckIfEvent(_xwin.display, &ping, is_ping, nullptr);)
            answer_ping(ping);
    if (waiting || _xwin.mouse_warped) // it also ends relative motion in time
        _xwin_private_handle_input();
}

// A window that disappears passes its focus to its parent, in full screen the root window. With RevertToParent the next
// step is None, and without a window manager no key would reach the program any more.
void focus_if_viewable(Window window) {
    if (attributes_of(window).map_state == IsViewable)
        XSetInputFocus(_xwin.display, window, RevertToPointerRoot, CurrentTime);
}

void keep_awake() {
    using Clock = std::chrono::steady_clock;
    static Clock::time_point next{};
    if (const Clock::time_point now = Clock::now(); now >= next) {
        XResetScreenSaver(_xwin.display);
        next = now + std::chrono::seconds(2);
    }
}

int is_ping(Display*, XEvent* event, char*) {
    return event->type == ClientMessage && static_cast<Atom>(event->xclient.data.l[0]) == atom("_NET_WM_PING");
}

void answer_ping(XEvent event) {
    event.xclient.window = XDefaultRootWindow(_xwin.display);
    XSendEvent(_xwin.display, event.xclient.window, False, SubstructureRedirectMask | SubstructureNotifyMask, &event);
}

RequestTrap::RequestTrap() {
    XSync(_xwin.display, False); // errors of earlier requests do not count
    request_refused = false;
    before_ = XSetErrorHandler(note_refusal);
}

RequestTrap::~RequestTrap() {
    XSync(_xwin.display, False);
    XSetErrorHandler(before_);
}

bool RequestTrap::refused() const {
    XSync(_xwin.display, False);
    return request_refused;
}

} // namespace vcc::platform
