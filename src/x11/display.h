// The display: events and drawing without delay, the keyboard's accents, and the library's screen at any size, in a
// window or full screen. Modules set their modes as usual and get our drivers.
#pragma once

#include "x11/picture_place.h"

#include <optional>
#include <string>

namespace vcc::platform {

/// Ends the process at once when the display server goes away, after a call of `note` in whatever thread noticed it.
/// Call before the library's start.
void end_with_display(void (*note)());

/// Tells the desktop whose window it is, and makes every graphics driver draw the mouse's sprite into the picture, so
/// that hiding and saving it work alike on all systems. Call after the library's start and before the first mode is
/// set.
void prepare_window();

/// The graphics library's start. Its own thread then wakes up when it has something to do, every 10 ms, instead of
/// every millisecond.
int start_library();

/// Handles the pointer and key events that the display server has sent. The graphics library's own thread does that
/// only every 10 ms, which a player can feel. Costs one or two microseconds without events; does nothing without a
/// display.
void take_display_events();

/// Sleeps until the display server has sent something or end_wait() is called, but at most `longest_ms`. A call of
/// end_wait() before the wait ends it, too.
void wait_for_input(int longest_ms);

/// For threads of the library: while the program waits for input with nothing to do, the calling one may wake up
/// `late_ms` late.
void wake_late_at_rest(int late_ms);

/// From any thread: the library's own may have taken an event before the waiting one saw it.
void end_wait();

/// Sends what has been drawn on the screen to the display server now. Costs a few microseconds if there is nothing to
/// send; does nothing without a display.
void flush_display();

/// Installs the library's keyboard with dead keys and compose sequences from our own list: the system's has thousands
/// that our texts cannot show, and takes 20 ms to read. The player's own list takes precedence; without our file the
/// system's counts.
void install_keyboard_with(const std::string& compose_list);

/// Puts our drivers before the library's own: windows can then have any size, and full screen is a borderless window of
/// the window manager. The window starts at `first`. Returns what prevents it, else an empty text; the library's own
/// drivers then stay, as they do with Fit::none. Call it once, after the library's start and before the first mode is
/// set.
std::string show_scaled(Fit fit, const WindowPlace& first);

/// What has since prevented the picture from being shown at its window's size; reported once, else empty.
std::string scaled_display_trouble();

/// Whether the picture is shown in full screen, which a window manager can change by itself; nothing if the library
/// shows it.
std::optional<bool> shown_in_full_screen();

/// Where the window stands; nothing if the library shows it.
std::optional<WindowPlace> window_place();

/// The driver whose list names the full-screen modes (a GFX_ constant of this system).
extern const int full_screen_list_driver;

/// Whether that driver centres a smaller picture on black, so that any mode large enough will do.
extern const bool full_screen_is_centred;

} // namespace vcc::platform
