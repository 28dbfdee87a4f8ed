#include "platform/clipboard.h"
#include "platform/latin1.h"

#include <chrono>
#include <memory>
#include <optional>

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <poll.h>

namespace vcc::platform {

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto answer_limit = std::chrono::milliseconds(500);
constexpr long text_limit_words = 4096 / 4; ///< property lengths are counted in 32-bit words

/// Waits for the owner to convert the text to `target`, and returns the property that it has stored it in, None if it
/// cannot; nothing at the deadline.
std::optional<Atom> await_answer(Display* display, Window window, Atom target, Clock::time_point deadline) {
    for (;;) {
        for (XEvent event; XCheckTypedWindowEvent(display, window, SelectionNotify, &event) != 0;)
            if (event.xselection.target == target)
                return event.xselection.property;
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0)
            return std::nullopt;
        pollfd waiting{ConnectionNumber(display), POLLIN, 0};
        ::poll(&waiting, 1, static_cast<int>(left));
    }
}

/// The text that the owner has stored in our window's property; empty if it is none.
std::string read_answer(Display* display, Window window, Atom property, Atom utf8) {
    Atom type = None;
    int format = 0;
    unsigned long count = 0;
    unsigned long left = 0;
    unsigned char* raw = nullptr;
    const int status = XGetWindowProperty(display, window, property, 0, text_limit_words, True, AnyPropertyType, &type,
                                          &format, &count, &left, &raw);
    const std::unique_ptr<unsigned char, decltype(&XFree)> data(raw, XFree);
    // A text too large for one property has another type and comes in pieces; nothing that long is of use here.
    if (status != Success || format != 8 || !data || (type != utf8 && type != XA_STRING))
        return {};
    const std::string bytes(reinterpret_cast<const char*>(data.get()), count);
    return type == utf8 ? latin1_from_utf8(bytes) : bytes.substr(0, bytes.find('\0'));
}

} // namespace

std::optional<std::string> read_clipboard() {
    // A connection of our own: the graphics library's is read by its own thread.
    const std::unique_ptr<Display, decltype(&XCloseDisplay)> display(XOpenDisplay(nullptr), XCloseDisplay);
    if (!display)
        return {};
    const Atom clipboard = XInternAtom(display.get(), "CLIPBOARD", False);
    const Atom utf8 = XInternAtom(display.get(), "UTF8_STRING", False);
    const Atom property = XInternAtom(display.get(), "VELDOR_CLIPBOARD", False);
    if (XGetSelectionOwner(display.get(), clipboard) == None)
        return "";

    // Closing the connection destroys the window.
    const Window window = XCreateSimpleWindow(display.get(), DefaultRootWindow(display.get()), 0, 0, 1, 1, 0, 0, 0);
    const auto deadline = Clock::now() + answer_limit;
    for (const Atom target : {utf8, static_cast<Atom>(XA_STRING)}) {
        XConvertSelection(display.get(), clipboard, target, property, window, CurrentTime);
        const std::optional<Atom> answer = await_answer(display.get(), window, target, deadline);
        if (!answer)
            return {};
        if (*answer != None)
            return read_answer(display.get(), window, *answer, utf8);
    }
    return "";
}

} // namespace vcc::platform
