// What slots of the control centre's screens do when activated: one row per action code, and two codes per option row.
#pragma once

#include "interaction/screen_run.h"
#include "screen/slot.h"

#include <allegro.h>

#include <string>
#include <vector>

namespace vcc {

/// An action code and its name in screen sources.
struct ActionName {
    int code;
    std::string name;
};

/// All of them, ascending.
std::vector<ActionName> action_names();

/// Carries out the action of a slot of the running set; a value ends the screen. A reset may rebuild the display at
/// another colour depth; `target` is then the new screen picture.
ScreenOutcome carry_out_action(BITMAP*& target, const SlotSet& running, int slot);

/// Steps the option of a slot of the running set, as a right click and a gamepad do; does nothing for other slots.
void step_value(BITMAP* target, const SlotSet& running, int slot, bool forward);

} // namespace vcc
