#include "core/mouse_buttons.h"

#include "core/gamepad.h"
#include "x11/display.h"

#include <allegro.h>

#include <deque>
#include <mutex>

namespace vcc {

namespace {

constexpr int button_flags = MOUSE_FLAG_LEFT_DOWN | MOUSE_FLAG_LEFT_UP | MOUSE_FLAG_RIGHT_DOWN | MOUSE_FLAG_RIGHT_UP |
                             MOUSE_FLAG_MIDDLE_DOWN | MOUSE_FLAG_MIDDLE_UP;
constexpr std::size_t most_states = 64; ///< not yet returned: a module reads the mouse itself

struct State {
    int buttons = 0;
    int place = 0; ///< of the pointer, both coordinates in one
};

std::mutex guard; // note() runs on the library's thread
std::deque<State> noted;
State seen;

void note(int flags) {
    platform::end_wait();
    if ((flags & button_flags) == 0)
        return;
    gamepad_used = false;
    const std::lock_guard lock(guard);
    if (noted.size() == most_states)
        noted.clear();
    noted.push_back({mouse_b, mouse_pos});
}

} // namespace

void watch_mouse_buttons() {
    mouse_callback = note;
    forget_mouse_buttons();
}

int next_mouse_buttons() {
    const std::lock_guard lock(guard);
    if (noted.empty()) {
        seen.place = mouse_pos;
    } else if (noted.front().place != seen.place) {
        seen.place = noted.front().place;
    } else {
        seen = noted.front();
        noted.pop_front();
    }
    if (!noted.empty())
        platform::end_wait();
    return seen.buttons;
}

int mouse_buttons() {
    return seen.buttons;
}

bool mouse_button_used() {
    const std::lock_guard lock(guard);
    return mouse_b != 0 || !noted.empty();
}

void forget_mouse_buttons() {
    const std::lock_guard lock(guard);
    noted.clear();
    seen = {mouse_b, mouse_pos};
}

} // namespace vcc
