// The program's own key codes, and translating the library's keys into them.
#pragma once

namespace vcc {

enum class KeyKind {
    character = 0, ///< typed into an entry field, ignored elsewhere
    editing = 1,
    ending = 2 ///< ends the input loop at once
};

struct KeyEvent {
    int code = 0;     ///< 0: no key
    int modifier = 0; ///< 301 Shift, 303 Ctrl, 101 Alt, 0 none
    KeyKind kind = KeyKind::character;
};

namespace key {
inline constexpr int left_button = 1, right_button = 2, both_buttons = 3;
inline constexpr int backspace = 8, tab = 9, enter = 13, escape = 27, alt_x = 45;
inline constexpr int f1 = 59, f4 = 62, f12 = 70, shift_f1 = 84, shift_f4 = 87, ctrl_f1 = 94, ctrl_f4 = 97;
inline constexpr int home = 71, up = 72, page_up = 73, left = 75, right = 77, end = 79, down = 80, page_down = 81;
inline constexpr int insert = 82, del = 83;
inline constexpr int ctrl_left = 115, ctrl_right = 116, ctrl_home = 117, ctrl_page_down = 118, ctrl_end = 119,
                     ctrl_page_up = 132, ctrl_up = 141, ctrl_down = 145;
inline constexpr int alt_w = 333;
inline constexpr int clear_field = 340, step_back = 341, step_forward = 342; ///< of gamepads
inline constexpr int over_nothing = 997, over_other_slot = 999;
inline constexpr int modifier_shift = 301, modifier_ctrl = 303, modifier_alt = 101;
} // namespace key

/// Translates character and key number, as the library's ureadkey() returns them, and its key_shifts. Pure.
KeyEvent translate_key(int character, int library_key, int shifts);

/// The next waiting key; code 0 if there is none.
KeyEvent read_key();

/// From now on read_key() knows the modifiers that were held when a key was pressed.
void watch_keys();

void forget_keys();

} // namespace vcc
