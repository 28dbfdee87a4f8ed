// Texts of a screen that name keys or, while a gamepad is used, its buttons.
#pragma once

#include "screen/slot.h"

#include <allegro.h>

namespace vcc {

/// Has the slots of a set name the one or the other, as far as the installation has words for both. Draws them again if
/// the set is `shown` on a picture.
void name_hints(BITMAP* shown, SlotSet& set, bool for_gamepad);

} // namespace vcc
