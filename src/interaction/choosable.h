// Whether the player can choose anything on a screen.
#pragma once

#include "screen/slot.h"

#include <string>

namespace vcc {

/// Why none of the set's slots can be chosen, naming the set's file; empty if one can be.
std::string why_nothing_can_be_chosen(const SlotSet& set);

} // namespace vcc
