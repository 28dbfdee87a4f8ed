// Help pages: a window over the running screen with the help entry of a slot.
#pragma once

#include "screen/slot.h"

#include <allegro.h>

#include <functional>

namespace vcc {

/// What a help page needs of the screen that opens it.
struct HelpRequest {
    BITMAP* target = nullptr;        ///< screen picture, borrowed
    BITMAP* save = nullptr;          ///< keeps the picture under the page, borrowed
    SlotSet* messages = nullptr;     ///< message set, changed in memory
    const Slot* requester = nullptr; ///< slot that asks for help
    std::function<void()> every_frame;
};

/// Shows the help entry of a slot until the player closes it; returns the key code or the button's action that closed
/// it.
int show_help(const HelpRequest& request);

} // namespace vcc
