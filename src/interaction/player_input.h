// What is remembered of mouse and keyboard from screen to screen.
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

} // namespace vcc
