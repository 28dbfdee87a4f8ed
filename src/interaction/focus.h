// Which slot is current: hit testing, focus search, and placing the pointer.
#pragma once

#include "core/geometry.h"
#include "screen/slot.h"

#include <span>

namespace vcc {

/// The area that counts as a slot for the pointer; inert slots have one, too, but are never hit.
Rect slot_rect(const Slot& slot);

bool is_selectable(const Slot& slot);

/// First slot under the pointer, or -1; with `single` only the slot at `start` is tested. `start` if there are no
/// slots.
int slot_under_pointer(int start, std::span<const Slot> slots, bool single);

/// The slot that becomes current: searches from the slot under the pointer, else from `index`, in `direction` (+1, -1).
/// -1 if no slot is selectable. Copies an entry field's text to its toggle record and selects the slot's font.
int pick_focus(SlotSet& set, int index, int direction, bool single);

/// Where the pointer goes when the keyboard moves the focus to a slot, by the current font's metrics. Pure except for
/// the grids.
Point pointer_place(const Slot& slot, int focus_x, int focus_y);
void place_pointer(const Slot& slot);

} // namespace vcc
