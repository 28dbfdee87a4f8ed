// Where a navigation key moves the focus, before the search for a selectable slot.
#pragma once

namespace vcc {

struct FocusMove {
    int current = 0;
    int direction = 1;
    bool place_pointer = false; ///< the key moved the focus: search from `current` and move the pointer there
};

/// The focus after a key in a set of `count` slots (at least 1). Without `by_keyboard` (the keyboard placed the pointer
/// last) Up, Down, Left, Right and End go to slot 0. Other keys change nothing. Pure.
FocusMove move_focus(int code, int current, int direction, int count, bool by_keyboard);

/// The focus after a finished entry: the next slot, or slot 0 after the last.
FocusMove move_to_next(int current, int count);

} // namespace vcc
