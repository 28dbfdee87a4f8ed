// What the pointer does in one frame of the input loop: reading it, and deciding what that means.
#pragma once

namespace vcc {

/// What the loop remembers of the pointer; outlives screens.
struct PointerMemory {
    int reported_buttons = 0; ///< button state that was last reported
    int wheel = 0;            ///< wheel position up to which steps were reported
};

struct PointerReading {
    int buttons = 0; ///< bit 0 left, bit 1 right
    int wheel = 0;   ///< the library's wheel position
    int over = -1;   ///< slot under the pointer, -1 none
};

/// What a reading means for the current slot.
struct PointerNews {
    enum class Place {
        ignored, ///< a right click or wheel step: where the pointer is does not matter
        away,    ///< over no slot, or over the background
        on_current,
        on_other
    };
    Place place = Place::ignored;
    int code = 0; ///< button code, wheel step, or 0
};

/// Judges one reading and updates the memory: every press is reported once, the wheel one step per frame. Pure.
PointerNews judge_pointer(PointerMemory& memory, const PointerReading& reading, int current);

/// The memory of the one mouse.
PointerMemory& pointer_memory();

/// Buttons held now, left and right only.
int held_buttons();

} // namespace vcc
