#include "platform/keyboard_focus.h"

namespace vcc::platform {

// A new full-screen window comes to the front with the keyboard.
void take_keyboard_focus() {}

} // namespace vcc::platform
