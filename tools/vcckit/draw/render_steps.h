// What a player does to see a picture.
#pragma once

#include "vcckit/draw/pilot.h"
#include "vcckit/draw/render.h"

#include "screen/draw_slot.h"
#include "screen/slot.h"

#include <string>
#include <vector>

namespace vcc::kit {

/// The slots of the screen: those of the menu also for what opens over it.
const SlotSet& set_of(const RenderRequest& request);

/// A place inside a slot for the pointer, pixels.
Point place_in(const Slot& slot);

/// Why the loaded screens have no such picture; empty if they have.
std::string fault_of(const RenderRequest& request);

/// The steps from the menu to the picture; those of the pressed look draw on `target`. The request has no fault.
std::vector<Step> steps_of(const RenderRequest& request, BITMAP* target);

} // namespace vcc::kit
