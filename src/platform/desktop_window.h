// The program's window on the desktop: hidden, of any size, or full screen. (The library itself gives each mode a
// window of its size, and full screen one that bypasses the window manager.) The caller holds the display's lock.
#pragma once

#include "platform/picture_place.h"
#include "platform/x_library.h"

namespace vcc::platform {

class DesktopWindow {
public:
    /// Shows the window for a picture: the first time at start_step() times its size, later at the size that the player
    /// has chosen.
    void show(Size picture, bool full_screen);
    void hide();
    bool is_shown() const { return shown_; }

    /// Waits until the window is on the screen, but at most half a second: it may start as an icon.
    Size size_on_screen() const;

    /// True if the window manager shows full screen, and gives the window the keyboard.
    bool is_managed() const { return managed_; }

    void configured(const XConfigureEvent& event);

private:
    void set_hints() const;
    void set_full_screen(bool wanted);
    void cover_desktop() const;

    bool shown_ = false;
    bool placed_ = false; ///< the window has got its first size
    bool full_ = false, managed_ = false;
    Area windowed_; ///< the window's place when last not full screen
};

/// While it lives, the library resizes, maps and unmaps invisible windows instead of the program's window and the
/// picture's window in it.
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
