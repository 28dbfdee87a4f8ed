#include "interaction/keys.h"

#include "core/gamepad.h"
#include "x11/display.h"

#include <allegro.h>
#include <allegro/internal/aintern.h>

#include <deque>
#include <mutex>

namespace vcc {

namespace {

constexpr int none = 0;

/// One key with a meaning: its code without a modifier or with Alt, with Shift, and with Ctrl.
struct KeyRow {
    int library_key;
    int character; ///< the character that the key may carry, 0 none
    int plain, shift, ctrl;
    KeyKind kind;
};

// From the X server Shift+Tab comes without a character and Delete with character 127, so rows match by key or
// character.
constexpr KeyRow key_rows[] = {
    {KEY_BACKSPACE, 8, key::backspace, key::backspace, none, KeyKind::editing},
    {KEY_TAB, 9, key::tab, key::tab, none, KeyKind::ending},
    {KEY_ENTER, 13, key::enter, key::enter, none, KeyKind::ending},
    {KEY_ENTER_PAD, 13, key::enter, key::enter, none, KeyKind::ending},
    {KEY_ESC, 27, key::escape, key::escape, none, KeyKind::ending},
    {KEY_F1, none, 59, 84, 94, KeyKind::ending},
    {KEY_F2, none, 60, 85, 95, KeyKind::ending},
    {KEY_F3, none, 61, 86, 96, KeyKind::ending},
    {KEY_F4, none, 62, 87, 97, KeyKind::ending},
    {KEY_F5, none, 63, 88, 98, KeyKind::ending},
    {KEY_F6, none, 64, 89, 99, KeyKind::ending},
    {KEY_F7, none, 65, 90, 100, KeyKind::ending},
    {KEY_F8, none, 66, 91, 101, KeyKind::ending},
    {KEY_F9, none, 67, 92, 102, KeyKind::ending},
    {KEY_F10, none, 68, 93, 103, KeyKind::ending},
    {KEY_F11, none, 69, 69, 69, KeyKind::ending},
    {KEY_F12, none, 70, 70, 70, KeyKind::ending},
    {KEY_INSERT, none, key::insert, key::insert, key::insert, KeyKind::editing},
    {KEY_DEL, 127, key::del, key::del, key::del, KeyKind::editing},
    {KEY_HOME, none, key::home, key::home, key::ctrl_home, KeyKind::ending},
    {KEY_END, none, key::end, key::end, key::ctrl_end, KeyKind::ending},
    {KEY_PGUP, none, key::page_up, key::page_up, key::ctrl_page_up, KeyKind::ending},
    {KEY_PGDN, none, key::page_down, key::page_down, key::ctrl_page_down, KeyKind::ending},
    {KEY_LEFT, none, key::left, key::left, key::ctrl_left, KeyKind::editing},
    {KEY_RIGHT, none, key::right, key::right, key::ctrl_right, KeyKind::editing},
    {KEY_UP, none, key::up, key::up, key::ctrl_up, KeyKind::ending},
    {KEY_DOWN, none, key::down, key::down, key::ctrl_down, KeyKind::ending},
    {key_clear_field, none, key::clear_field, none, none, KeyKind::editing},
    {key_step_back, none, key::step_back, none, none, KeyKind::ending},
    {key_step_forward, none, key::step_forward, none, none, KeyKind::ending},
};

/// Without Num Lock a keypad key has no character and stands for the key printed below its digit.
int without_num_lock(int library_key) {
    constexpr int below_digit[] = {KEY_INSERT, KEY_END,   KEY_DOWN, KEY_PGDN, KEY_LEFT,
                                   KEY_5_PAD,  KEY_RIGHT, KEY_HOME, KEY_UP,   KEY_PGUP};
    if (library_key >= KEY_0_PAD && library_key <= KEY_9_PAD)
        return below_digit[library_key - KEY_0_PAD];
    return library_key == KEY_DEL_PAD ? KEY_DEL : library_key;
}

int modifier_of(int shifts) {
    int modifier = 0;
    if (shifts & KB_SHIFT_FLAG)
        modifier = key::modifier_shift;
    if (shifts & KB_CTRL_FLAG)
        modifier = key::modifier_ctrl;
    if (shifts & KB_ALT_FLAG)
        modifier = key::modifier_alt;
    return modifier;
}

/// The code if it can be typed (Latin-1 without control codes), else 0.
int typed(int code) {
    return code >= 32 && code <= 255 ? code : 0;
}

KeyEvent translate_plain(int character, int library_key, int modifier) {
    if (character == 0)
        library_key = without_num_lock(library_key);
    for (const KeyRow& row : key_rows) {
        const bool hit = character == 0 ? row.library_key == library_key : row.character == character;
        if (hit)
            return {modifier == key::modifier_shift ? row.shift : row.plain, modifier, row.kind};
    }
    return {typed(character != 0 ? character : library_key), modifier, KeyKind::character};
}

/// With Ctrl or Alt only the key counts; the library's characters mean nothing (Ctrl+A is 1, Alt+A is 0).
KeyEvent translate_modified(int library_key, int modifier) {
    const bool ctrl = modifier == key::modifier_ctrl;
    for (const KeyRow& row : key_rows) {
        const int code = ctrl ? row.ctrl : row.plain;
        if (row.library_key == library_key && code != none)
            return {code, modifier, row.kind};
    }
    const bool letter_or_digit = library_key >= KEY_A && library_key <= KEY_9_PAD;
    const int code = letter_or_digit ? library_key + 96 : library_key;
    if (!ctrl && code == 'w')
        return {key::alt_w, modifier, KeyKind::ending};
    if (!ctrl && code == 'x')
        return {key::alt_x, modifier, KeyKind::ending};
    return {typed(code), modifier, KeyKind::character};
}

/// A key in the library's buffer, which does not keep the modifiers: they may be up again when it is read.
struct KeyPress {
    int character, library_key, shifts;
};
constexpr std::size_t most_presses = 64; ///< as in the library's buffer
std::mutex guard;                        // the library's thread notes
std::deque<KeyPress> presses;

int note(int character, int* library_key) {
    const bool by_pad = (*library_key & by_gamepad) != 0;
    gamepad_used = by_pad;
    *library_key &= ~by_gamepad;
    const std::lock_guard lock(guard);
    if (presses.size() == most_presses)
        presses.pop_front();
    presses.push_back({character, *library_key, by_pad ? 0 : _key_shifts});
    platform::end_wait();
    return character;
}

/// Modifiers that were held with the key, or are held now if it was not noted.
int shifts_with(int character, int library_key) {
    const std::lock_guard lock(guard);
    while (!presses.empty()) {
        const KeyPress press = presses.front();
        presses.pop_front(); // those before it have been read by others
        if (press.character == character && press.library_key == library_key)
            return press.shifts;
    }
    return key_shifts;
}

} // namespace

KeyEvent translate_key(int character, int library_key, int shifts) {
    const int modifier = modifier_of(shifts);
    if (modifier == key::modifier_ctrl || modifier == key::modifier_alt)
        return translate_modified(library_key, modifier);
    // Some drivers report character 1 for a shifted key that has none.
    if (modifier == key::modifier_shift && character == 1)
        character = 0;
    return translate_plain(character, library_key, modifier);
}

KeyEvent read_key() {
    if (!keypressed())
        return {};
    int library_key = 0;
    const int character = ureadkey(&library_key);
    return translate_key(character, library_key, shifts_with(character, library_key));
}

void watch_keys() {
    keyboard_ucallback = note;
}

void forget_keys() {
    clear_keybuf();
    const std::lock_guard lock(guard);
    presses.clear();
}

} // namespace vcc
