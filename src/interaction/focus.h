// Which slot is current: hit-testing, focus search, and where the pointer goes.
#pragma once

#include "core/geometry.h"
#include "screen/draw_slot.h"
#include "screen/slot.h"

#include <span>

namespace vcc {

inline int pointer_by_keyboard = 0; ///< the pointer was last placed by keyboard navigation

/// The area in which the pointer is on a slot (inert slots have one too; nobody may hit them).
Rect slot_rect(const Slot& slot);

/// True when the keyboard's focus may rest on the slot.
bool is_selectable(const Slot& slot);

/// First slot from 0 on under the pointer, or -1; with `single` only the slot at `start` is tested. Without any slot
/// the answer is `start`.
int slot_under_pointer(int start, std::span<const Slot> slots, bool single);

/// The slot that becomes current from `index` in `direction` (+1, -1), the pointer's slot first; -1 when no slot is
/// selectable, `index` when there is none at all. An entry field's text is copied to its toggle record; the slot's font
/// is current afterwards.
int pick_focus(SlotSet& set, int index, int direction, bool single);

/// Where the pointer goes when the keyboard moves to a slot; font metrics are those of the current font. Pure but for
/// the grids.
Point pointer_place(const Slot& slot, int focus_x, int focus_y);
void place_pointer(const Slot& slot);

} // namespace vcc
