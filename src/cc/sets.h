// The four slot sets of the control centre's screens, and their records by fixed numbers.
#pragma once

#include "screen/slot.h"

#include <cstddef>

namespace vcc {

inline SlotSet menu_set, options_set, info_set, message_set;

/// Loads the four sets of the current language; 0, or 45 if one of them failed (logged). The options set then has a
/// slot and a toggle record for every fixed number.
int load_cc_slot_sets();

/// Releases the four sets.
void free_cc_slot_sets();

// Records of the options set by fixed numbers.
inline Slot& option_slot(int index) {
    return options_set.slots[static_cast<std::size_t>(index)];
}
inline Slot& option_toggle(int index) {
    return options_set.toggles[static_cast<std::size_t>(index)];
}

/// Gives a slot the colour of its resting look, which back_colour holds.
inline void give_normal_look(int index) {
    option_slot(index).fore_colour = option_slot(index).back_colour;
}

} // namespace vcc
