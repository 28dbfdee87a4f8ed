// What a player would do to see a picture.
#pragma once

#include "pilot.h"
#include "render.h"

#include "screen/draw_slot.h"
#include "screen/slot.h"

#include <string>
#include <vector>

namespace vcc::kit {

/// A place in a slot that the pointer can be at, pixels.
Point place_in(const Slot& slot);

/// Why there is no such picture of the screens that are loaded; empty when there is one.
std::string fault_of(const RenderRequest& request);

/// The steps from the menu to the picture; those of the pressed look draw on `target`. The request has no fault.
std::vector<Step> steps_of(const RenderRequest& request, BITMAP* target);

} // namespace vcc::kit
