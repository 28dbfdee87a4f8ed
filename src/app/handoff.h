// Hands the process to a game module and takes it back.
#pragma once

#include "app/startup.h"
#include "display/graphics_mode.h"

#include <cstdint>

namespace vcc {

/// The value of `fullscreen` for a module's result; modules may return any number but 0 for full screen.
constexpr std::uint8_t display_state(std::uint8_t module_result) {
    return module_result == 0 ? windowed : full_screen;
}

/// Calls the chosen module's entry and takes over the display state that it returns. Shows and logs a missing library
/// or entry. Does nothing for 45; logs any other number without a module and keeps it as the pending error.
void hand_off(Session& session);

/// Restores the display's switch behaviour and the pointer after a pass.
void restore_display();

} // namespace vcc
