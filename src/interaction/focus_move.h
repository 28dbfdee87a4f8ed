// Where a navigation key takes the focus, before the search for a selectable slot.
#pragma once

namespace vcc {

struct FocusMove {
    int current = 0;
    int direction = 1;
    bool place_pointer = false; ///< the key moved the focus: search from `current` and take the pointer there
};

/// The focus after a key in a set of `count` slots (at least 1). `by_keyboard`: the pointer was last placed by the
/// keyboard; without it Up, Down, Left, Right and End go to slot 0. Other keys change nothing. Pure.
FocusMove move_focus(int code, int current, int direction, int count, bool by_keyboard);

/// The slot that follows a finished entry: the next one, slot 0 after the last.
FocusMove move_to_next(int current, int count);

} // namespace vcc
