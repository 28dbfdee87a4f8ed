// What the slots of the control centre's screens do when they are activated: one row per action code, and two codes in
// every option row.
#pragma once

#include "core/installation.h"
#include "screen/slot.h"

#include <allegro.h>

#include <optional>
#include <string>
#include <vector>

namespace vcc {

/// A code that does something, and its name as sources of screens write it.
struct ActionName {
    int code;
    std::string name;
};

/// All of them, ascending.
std::vector<ActionName> action_names();

/// Carries out the action of a slot of the running set; a value ends the screen with it. A reset may build the display
/// again in another colour depth: `target` is then the new screen picture.
std::optional<ScreenResult> carry_out_action(BITMAP*& target, const SlotSet& running, int slot);

/// A right click on a slot of the running set steps its option back; nothing for other slots.
void step_back(BITMAP* target, const SlotSet& running, int slot);

} // namespace vcc
