// Draws slots, and records where each slot's entry field lies.
#pragma once

#include "core/geometry.h"
#include "screen/slot.h"

#include <allegro.h>

#include <span>
#include <vector>

namespace vcc {

inline constexpr bool show_slot_pictures = true; ///< picture slots are drawn

/// Where a slot's entry field lies and how it is edited.
struct FieldPlace {
    int x = 0, y = 0;    ///< pixels
    int size = 0;        ///< characters
    int input_mode = 0;  ///< as in the slot
    int back_colour = 0; ///< as in the slot
};

/// Position of a text slot: its destination if both coordinates are set, else its cell in the slot's font. Pure except
/// for the grids.
Point slot_position(const Slot& slot);

/// Draws one record; nothing for an index outside the records.
void draw_slot(BITMAP* target, std::span<const Slot> records, int index);

void draw_slots(BITMAP* target, std::span<const Slot> records);

/// Draws every slot of a set and records its field. Plays only the sound of the first slot that has one.
std::vector<FieldPlace> build_entry_table(BITMAP* target, std::span<const Slot> slots);

/// The same for a whole screen on a fresh background.
std::vector<FieldPlace> draw_slot_set(BITMAP* target, const SlotSet& set);

} // namespace vcc
