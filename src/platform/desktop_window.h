// The program's window as the desktop sees it: shown or not, free in its size, or full screen. The library's own way
// gives each mode a window of its size anew, and full screen one that the window manager knows nothing of. The caller
// holds the display's lock.
#pragma once

#include "platform/picture_place.h"
#include "platform/x_library.h"

namespace vcc::platform {

class DesktopWindow {
public:
    /// Shows the window for a picture. The first time it is as many times as large as fit on the desktop; later it has
    /// the size that the player gave it.
    void show(Size picture, bool full_screen);
    void hide();
    bool is_shown() const { return shown_; }

    /// Waits until the window is on the screen, but not for ever: the player may have it start as an icon.
    Size size_on_screen() const;

    /// True when a window manager is asked for full screen, and gives the window the keyboard.
    bool is_managed() const { return managed_; }

    void configured(const XConfigureEvent& event);

private:
    void set_hints() const;
    void set_full_screen(bool wanted);
    void cover_desktop() const;

    bool shown_ = false;
    bool placed_ = false; ///< the window has got its first size
    bool full_ = false, managed_ = false;
    Area windowed_; ///< the window's place when it last was not full screen
};

/// As long as it lives, the library resizes, maps and unmaps windows that nobody sees in place of the program's and of
/// the one in it that shows the picture.
class WindowStandIn {
public:
    WindowStandIn();
    ~WindowStandIn();
    WindowStandIn(const WindowStandIn&) = delete;
    WindowStandIn& operator=(const WindowStandIn&) = delete;

private:
    Window managed_, picture_, hidden_;
};

} // namespace vcc::platform
