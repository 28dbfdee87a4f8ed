// Message boxes of the desktop.
#pragma once

#include <string>

namespace vcc::platform {

/// Shows a message in place of the graphics library's box, and waits until it is confirmed. False if the library's box
/// is there (on X11 that is a program, xmessage, which many desktops lack), or if there is no other either.
bool show_message(const std::string& text);

} // namespace vcc::platform
