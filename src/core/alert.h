// Messages that the player must see and confirm.
#pragma once

#include <string_view>

namespace vcc {

/// The library's alert box on the screen with up to three lines and a single button "OK" (shortcut C); returns when it
/// is pressed. Without a graphics mode nothing is shown.
void show_alert(std::string_view line1, std::string_view line2 = {}, std::string_view line3 = {});

/// The library's own message box, for the time before a graphics mode exists.
void show_message_box(std::string_view text);

} // namespace vcc
