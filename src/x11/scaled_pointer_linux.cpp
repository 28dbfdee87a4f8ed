#include "x11/scaled_pointer.h"

#include <array>

namespace vcc::platform {

namespace {

constexpr int ticks_until_absolute = 200; ///< two seconds, as in the library
constexpr int most_discarded = 16;
constexpr unsigned warp_bit = 4; ///< in relative motion, four of eight events warp the pointer to the middle

/// By the server's button number.
constexpr std::array<int, 10> button_bits{0, 1, 4, 2, 0, 0, 0, 0, 8, 16};

int scroll(int by) {
    return _xwin_mouse_extended_range ? by : 0;
}

/// Whole picture pixels in a distance; keeps the remainder for the next one.
int picture_steps(int by, int shown, int picture, long& rest) {
    rest += static_cast<long>(by) * picture;
    const long steps = rest / shown;
    rest -= steps * shown;
    return static_cast<int>(steps);
}

} // namespace

ScaledPointer::Spot ScaledPointer::spot(Window window, int x, int y) const {
    if (window == _xwin.window)
        return {x, y};
    return {x - shown_.place().x1, y - shown_.place().y1};
}

void ScaledPointer::tell(int dx, int dy, int dz, int dw) const {
    if (_xwin_mouse_interrupt)
        (*_xwin_mouse_interrupt)(dx, dy, dz, dw, buttons_);
}

void ScaledPointer::tell_place(Spot at) const {
    const Size shown = shown_.place().size(), picture = shown_.picture();
    const int dx = picture_pixel(at.x, shown.width, picture.width) - (_mouse_x - scroll(_xwin.scroll_x));
    const int dy = picture_pixel(at.y, shown.height, picture.height) - (_mouse_y - scroll(_xwin.scroll_y));
    if (dx != 0 || dy != 0)
        tell(dx, dy);
}

void ScaledPointer::tell_motion(Spot by) {
    const Size shown = shown_.place().size(), picture = shown_.picture();
    const int dx = picture_steps(by.x, shown.width, picture.width, rest_x_);
    const int dy = picture_steps(by.y, shown.height, picture.height, rest_y_);
    if (dx != 0 || dy != 0)
        tell(dx, dy);
}

void ScaledPointer::warp(Spot to) const {
    XWarpPointer(_xwin.display, None, _xwin.window, 0, 0, 0, 0, to.x, to.y);
}

void ScaledPointer::moved(const XMotionEvent& event) {
    const Spot at = spot(event.window, event.x, event.y);
    const Spot by{at.x - last_.x, at.y - last_.y};
    const bool same = by.x == 0 && by.y == 0;
    if (discarded_ > 0 && !same && discarded_++ < most_discarded)
        return;
    last_ = at;
    discarded_ = 0;
    if (!_xwin.mouse_warped) {
        rest_x_ = rest_y_ = 0;
        tell_place(at);
        return;
    }
    if (same)
        return;
    if (relative_events_++ & warp_bit) {
        last_ = {shown_.place().size().width / 2, shown_.place().size().height / 2};
        discarded_ = 1;
        warp(last_);
    }
    tell_motion(by);
}

void ScaledPointer::button(const XButtonEvent& event, bool pressed) {
    const int bit = event.button < button_bits.size() ? button_bits[event.button] : 0;
    buttons_ = pressed ? buttons_ | bit : buttons_ & ~bit;
    const auto step = [&](unsigned forward, unsigned back) {
        return pressed ? (event.button == forward) - (event.button == back) : 0;
    };
    tell(0, 0, step(Button4, Button5), step(7, 6));
}

void ScaledPointer::entered(const XCrossingEvent& event) {
    last_ = spot(event.window, event.x, event.y);
    discarded_ = 0;
    _mouse_on = TRUE;
    _xwin_mouse_enter_notify();
    if (_xwin.mouse_warped)
        tell(0, 0);
    else
        tell_place(last_);
}

void ScaledPointer::left(const XCrossingEvent& event) {
    const bool into_bar = event.window == _xwin.window && event.detail == NotifyAncestor;
    const bool out_of_bar = event.window == _xwin.wm_window && event.detail == NotifyInferior;
    if (into_bar || out_of_bar)
        return;
    _mouse_on = FALSE;
    tell(0, 0);
    _xwin_mouse_leave_notify();
}

void ScaledPointer::tick() {
    if (!_xwin.mouse_warped || _xwin.mouse_warped++ <= ticks_until_absolute)
        return;
    _xwin.mouse_warped = 0;
    const Size shown = shown_.place().size(), picture = shown_.picture();
    warp({shown_pixel(_mouse_x - scroll(_xwin.scroll_x), shown.width, picture.width),
          shown_pixel(_mouse_y - scroll(_xwin.scroll_y), shown.height, picture.height)});
}

} // namespace vcc::platform
