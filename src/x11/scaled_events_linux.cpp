#include "x11/scaled_events.h"

#include "x11/window_identity.h"

namespace vcc::platform {

namespace {

constexpr std::size_t most_events = 200; ///< per call

/// A held key repeats as a release and a press at the same time; for the library the key stays down.
bool is_repeat(const XEvent& event, const XEvent& next) {
    return event.type == KeyRelease && next.type == KeyPress && event.xkey.keycode == next.xkey.keycode &&
           event.xkey.time == next.xkey.time;
}

bool asks_to_close(const XClientMessageEvent& event) {
    return static_cast<Atom>(event.data.l[0]) == XInternAtom(_xwin.display, "WM_DELETE_WINDOW", False);
}

} // namespace

Size ScaledEvents::read(Size known) {
    if (shown_.is_open())
        pointer_.tick();
    events_.clear();
    while (events_.size() < most_events && XPending(_xwin.display) > 0)
        XNextEvent(_xwin.display, &events_.emplace_back());
    for (std::size_t i = 0; i < events_.size(); ++i)
        if (i + 1 == events_.size() || !is_repeat(events_[i], events_[i + 1]))
            handle(events_[i], known);
    return known;
}

void ScaledEvents::handle(XEvent& event, Size& size) {
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
        pointer_.button(event.xbutton, event.type == ButtonPress);
        break;
    case MotionNotify:
        if (shown_.is_open())
            pointer_.moved(event.xmotion);
        break;
    case EnterNotify:
        if (shown_.is_open())
            pointer_.entered(event.xcrossing);
        break;
    case LeaveNotify:
        pointer_.left(event.xcrossing);
        break;
    case Expose:
        if (shown_.is_open() && event.xexpose.window == _xwin.window)
            shown_.uncovered({event.xexpose.x, event.xexpose.y, event.xexpose.x + event.xexpose.width,
                              event.xexpose.y + event.xexpose.height});
        break;
    case ConfigureNotify:
        window_.configured(event.xconfigure);
        if (event.xconfigure.window == _xwin.wm_window)
            size = {event.xconfigure.width, event.xconfigure.height};
        break;
    case ReparentNotify:
        window_.reparented();
        break;
    case PropertyNotify:
        window_.property_changed(event.xproperty);
        break;
    case MappingNotify:
        if (event.xmapping.request == MappingKeyboard)
            _xwin_get_keyboard_mapping();
        break;
    case ClientMessage:
        if (is_ping(event))
            answer_ping(event);
        else if (asks_to_close(event.xclient) && _xwin.close_button_callback)
            _xwin.close_button_callback();
        break;
    default:
        break;
    }
}

} // namespace vcc::platform
