// Handing the process to a game module and taking it back.
#pragma once

#include "app/startup.h"
#include "display/graphics_mode.h"

#include <cstdint>

namespace vcc {

/// What the result of a module makes of `fullscreen`: modules may call full screen by any number but 0.
constexpr std::uint8_t display_state(std::uint8_t module_result) {
    return module_result == 0 ? windowed : full_screen;
}

/// Calls the entry of the chosen module, whose result says the display's state. A library that is missing or lacks its
/// entry is shown and logged. Other choices than a module: 45 does nothing, any other number is logged and left
/// pending.
void hand_off(Session& session);

/// Takes the display back after a pass: switch behaviour and pointer.
void restore_display();

} // namespace vcc
