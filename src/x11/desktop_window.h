// The program's window on the desktop: hidden, of any size, or full screen. (The library itself gives each mode a
// window of its size, and full screen one that bypasses the window manager.) The caller holds the display's lock.
#pragma once

#include "x11/picture_place.h"
#include "x11/x_library.h"

namespace vcc::platform {

class DesktopWindow {
public:
    DesktopWindow(Fit fit, const WindowPlace& first) : fit_(fit), first_(first) {}

    /// Opens the window for a picture: the first time where `first` says, or at first_size(), later at the size that
    /// the player has chosen. It appears with the first reveal().
    void open(Size picture, bool full_screen);
    void reveal();
    void hide();
    bool is_open() const { return open_; }
    bool is_visible() const { return visible_; }

    /// For a visible window waits until it is on the screen, but at most half a second: it may start as an icon.
    Size size() const;

    /// Full screen as the window manager shows it, which its own commands can change; without one, as it was opened.
    bool is_full() const { return full_; }

    /// Its area is only known while it is neither maximised nor in full screen.
    WindowPlace place() const;

    void configured(const XConfigureEvent& event);
    void reparented();
    void property_changed(const XPropertyEvent& event);

private:
    void set_first_size(Size picture);
    void set_hints(bool with_place) const;
    void set_full_screen(bool wanted);
    void ask_for_full_screen(bool wanted);
    void cover_desktop() const;

    Fit fit_;
    WindowPlace first_;
    bool open_ = false, visible_ = false;
    bool full_ = false;
    bool managed_ = false;       ///< the window manager shows full screen, and gives the window the keyboard
    bool asked_ = false;         ///< for another state, and the window manager has not answered
    bool started_full_ = false;  ///< and has not been a window since
    bool was_maximised_ = false; ///< before full screen
    Area windowed_;              ///< the window's place when last not full screen
};

/// While it lives, the library resizes, maps and unmaps invisible windows instead of the program's window and the
/// picture's window in it.
class WindowStandIn {
public:
    WindowStandIn();
    ~WindowStandIn();
    WindowStandIn& operator=(WindowStandIn&&) = delete;

private:
    Window managed_, picture_, hidden_;
};

} // namespace vcc::platform
