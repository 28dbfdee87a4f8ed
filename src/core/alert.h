#pragma once

#include <string_view>

namespace vcc {

/// Shows the library's alert box with up to three lines and a single button "OK" (shortcut C), and waits until it is
/// pressed. Does nothing without a graphics mode or after a request to close: callers log what they show.
void show_alert(std::string_view line1, std::string_view line2 = {}, std::string_view line3 = {});

void alert_and_log(std::string_view shown, std::string_view logged);
inline void alert_and_log(std::string_view text) {
    alert_and_log(text, text);
}

/// A message box of the desktop, for the time before a graphics mode exists; the library's own if there is no other.
void show_message_box(std::string_view text);

} // namespace vcc
