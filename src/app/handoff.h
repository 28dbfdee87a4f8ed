// Handing the process to a game module and taking it back.
#pragma once

#include "app/startup.h"

namespace vcc {

/// Calls the entry of the chosen module, whose result becomes `fullscreen`. A library that is missing or lacks its
/// entry is shown and logged. Other choices than a module: 45 does nothing, any other number is logged and left
/// pending.
void hand_off(Session& session);

/// Takes the display back after a pass: switch behaviour and pointer.
void restore_display();

} // namespace vcc
