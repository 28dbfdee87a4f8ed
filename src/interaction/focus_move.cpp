#include "interaction/focus_move.h"

#include "interaction/keys.h"

namespace vcc {

FocusMove move_to_next(int current, int count) {
    return {current + 1 < count ? current + 1 : 0, 1, false};
}

FocusMove move_focus(int code, int current, int direction, int count, bool by_keyboard) {
    const auto go = [&](int to, int new_direction) { return FocusMove{by_keyboard ? to : 0, new_direction, true}; };
    switch (code) {
    case key::home:
        return {0, 1, true};
    case key::up:
    case key::left:
        return go(current > 0 ? current - 1 : count - 1, -1);
    case key::down:
    case key::right:
        return go(move_to_next(current, count).current, 1);
    case key::end:
        return go(count - 1, -1);
    case key::page_up:
    case key::ctrl_page_up:
        return {current, -1, false};
    case key::page_down:
    case key::ctrl_page_down:
        return {current, 1, false};
    default:
        return {current, direction, false};
    }
}

} // namespace vcc
