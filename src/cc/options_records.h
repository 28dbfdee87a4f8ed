// The records of the options set by their fixed numbers, for the files of this folder. load_cc_slot_sets() has seen to
// it that they are all there.
#pragma once

#include "cc/screens.h"
#include "screen/slot.h"

#include <cstddef>

namespace vcc {

inline Slot& option_slot(int index) {
    return options_set.slots[static_cast<std::size_t>(index)];
}
inline Slot& option_toggle(int index) {
    return options_set.toggles[static_cast<std::size_t>(index)];
}

/// A record's back_colour holds the colour of its resting look.
inline void give_normal_look(int index) {
    option_slot(index).fore_colour = option_slot(index).back_colour;
}

} // namespace vcc
