// Which window of the desktop hears the keyboard.
#pragma once

namespace vcc::platform {

/// Asks the desktop to give the keyboard to the program's window, if that is on the screen. A window manager leaves a
/// full-screen window of the graphics library alone, so that nobody else does it.
void take_keyboard_focus();

} // namespace vcc::platform
