// What is remembered of mouse and keyboard from screen to screen.
#pragma once

namespace vcc {

struct PlayerInput {
    int reported_buttons = 0;    ///< as the input loop last reported them
    int wheel = 0;               ///< the position that the loop has reported
    int pointer_by_keyboard = 0; ///< the pointer was last placed by keyboard navigation
    int insert_mode = 0;         ///< of entry fields: 0 overwrite, 1 insert
};
inline PlayerInput player_input;

} // namespace vcc
