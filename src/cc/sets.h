// The four slot sets of the control centre's screens, and their records by fixed numbers.
#pragma once

#include "screen/slot.h"

#include <cstddef>

namespace vcc {

enum class CcScreen : int { help = -1, menu, options };
inline CcScreen cc_screen = CcScreen::menu; ///< the current screen

inline SlotSet menu_set, options_set, info_set, message_set;

/// Loads the four sets of the current language; 0, or 45 if one of them failed (logged). The options set then has a
/// slot and a toggle record for each fixed number.
int load_cc_slot_sets();

void free_cc_slot_sets();

// Records of the options set by fixed numbers.
inline Slot& option_slot(int index) {
    return options_set.slots[static_cast<std::size_t>(index)];
}
inline Slot& option_toggle(int index) {
    return options_set.toggles[static_cast<std::size_t>(index)];
}

} // namespace vcc
