// What the desktop knows of the program's window: owner, icon, title.
#include "platform/latin1.h"
#include "x11/display.h"
#include "x11/x_library.h"

#include <X11/Xatom.h>
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include <unistd.h>

// Of the picture all but its header: pixels of 32 bits, the top row first.
asm(".pushsection .rodata\n"
    ".balign 4\n"
    "icon_begin: .incbin \"icon-48.tga\", 18\n"
    "icon_end:\n"
    ".popsection\n");
extern "C" const std::uint32_t icon_begin[], icon_end[]; // NOLINT(modernize-avoid-c-arrays)

namespace vcc::platform {

namespace {

constexpr unsigned long icon_side = 48;

void (*set_library_title)(const char* title);

void set_icon() {
    std::vector<unsigned long> values{icon_side, icon_side};
    values.insert(values.end(), icon_begin, icon_end);
    set_property("_NET_WM_ICON", XA_CARDINAL, values);
}

void set_title(const char* title) {
    set_library_title(title);
    const DisplayLock lock;
    const std::string name = utf8_from_latin1(title);
    XChangeProperty(_xwin.display, _xwin.wm_window, atom("_NET_WM_NAME"), atom("UTF8_STRING"), 8, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(name.data()), static_cast<int>(name.size()));
}

} // namespace

void prepare_window() {
    if (!system_driver || system_driver->id != SYSTEM_XWINDOWS)
        return;
    const DisplayLock lock;
    std::string instance = "veldor", name = "Veldor"; // the desktop entry has this name
    XClassHint class_hint{instance.data(), name.data()};
    XWMHints hints{}; // without the library's icon
    hints.flags = InputHint | StateHint;
    hints.input = True;
    hints.initial_state = NormalState;
    // also names the machine, without which the process number means nothing
    XSetWMProperties(_xwin.display, _xwin.wm_window, nullptr, nullptr, nullptr, 0, nullptr, &hints, &class_hint);
    set_property("_NET_WM_PID", XA_CARDINAL, {static_cast<unsigned long>(::getpid())});
    std::array<Atom, 2> protocols{atom("WM_DELETE_WINDOW"), atom("_NET_WM_PING")};
    XSetWMProtocols(_xwin.display, _xwin.wm_window, protocols.data(), static_cast<int>(protocols.size()));
    set_icon();
    set_library_title = system_driver->set_window_title;
    system_driver->set_window_title = set_title;
}

} // namespace vcc::platform
