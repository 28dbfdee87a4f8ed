// What the display server and the graphics library's drivers leave to the program: events and drawing in time, the
// keyboard's focus and accents, and what the full-screen driver can do.
#pragma once

#include <string>

namespace vcc::platform {

/// Has every graphics driver leave the mouse pointer in the picture, where hiding and saving it mean the same on all
/// systems. Call after the library's start and before the first mode is set.
void keep_pointer_in_picture();

/// Takes over the pointer and key events that the display server has sent. The graphics library does so in a thread of
/// its own, but only every 10 ms, which a player can feel. Costs one or two microseconds when there are none; nothing
/// happens without a display.
void take_display_events();

/// Sends what has been drawn on the screen to the display server now. Costs a few microseconds when there is nothing to
/// send; nothing happens without a display.
void flush_display();

/// Asks the desktop to give the keyboard to the program's full-screen window, if that is on the screen. A window
/// manager leaves a full-screen window of the graphics library alone, so that nobody else does it; one that shows the
/// window full screen itself also gives it the keyboard.
void take_keyboard_focus();

/// As long as it lives, a keyboard that is opened reads its dead keys and compose sequences from a list of ours: the
/// system's has thousands that our texts cannot show, and takes 20 ms to read. A list of the player's own comes first;
/// without the file nothing changes.
class ComposeList {
public:
    explicit ComposeList(const std::string& path);
    ~ComposeList();
    ComposeList(const ComposeList&) = delete;
    ComposeList& operator=(const ComposeList&) = delete;

private:
    bool ours_ = false;
};

/// The driver whose list names the full-screen modes (a GFX_ constant of this system).
extern const int full_screen_list_driver;

/// True when that driver shows a picture smaller than the mode centred on black: every listed mode that is large enough
/// then stands for the picture's own size.
extern const bool full_screen_is_centred;

} // namespace vcc::platform
