// What is remembered of mouse and keyboard from screen to screen, and what the pointer does in one frame.
#pragma once

namespace vcc {

/// What the input loop last reported of the pointer.
struct PointerMemory {
    int reported_buttons = 0;
    int wheel = 0; ///< its position
};

struct PlayerInput {
    PointerMemory pointer;
    int pointer_by_keyboard = 0; ///< the pointer was last placed by keyboard navigation
    int insert_mode = 0;         ///< of entry fields: 0 overwrite, 1 insert
};
inline PlayerInput player_input;

struct PointerReading {
    int buttons = 0; ///< bit 0 left, bit 1 right
    int wheel = 0;   ///< the library's wheel position
    int over = -1;   ///< slot under the pointer, -1 none
};

/// What a reading means for the current slot.
struct PointerNews {
    enum class Place {
        ignored, ///< right click or wheel step: the place does not matter
        away,    ///< over no slot, or over the background
        on_current,
        on_other
    };
    Place place = Place::ignored;
    int code = 0; ///< button code, wheel step, or 0
};

/// Interprets a reading and updates the memory: reports each press once, and the wheel one step per frame. Pure.
PointerNews judge_pointer(PointerMemory& memory, const PointerReading& reading, int current);

} // namespace vcc
