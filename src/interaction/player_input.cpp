#include "interaction/player_input.h"

#include "interaction/keys.h"

#include <algorithm>

namespace vcc {

namespace {

/// Buttons just pressed; none while a reported one is still held.
int new_buttons(PointerMemory& memory, int held) {
    if (held & memory.reported_buttons)
        return 0;
    memory.reported_buttons = held;
    return held;
}

int wheel_step(PointerMemory& memory, int wheel) {
    const int step = std::clamp(wheel - memory.wheel, -1, 1);
    memory.wheel += step;
    if (step == 0)
        return 0;
    return step > 0 ? key::up : key::down;
}

PointerNews::Place place_of(int over, int current) {
    if (over <= 0) // slot 0, too: odd on purpose
        return PointerNews::Place::away;
    return over == current ? PointerNews::Place::on_current : PointerNews::Place::on_other;
}

} // namespace

PointerNews judge_pointer(PointerMemory& memory, const PointerReading& reading, int current) {
    const int buttons = new_buttons(memory, reading.buttons);
    if (buttons & key::right_button)
        return {PointerNews::Place::ignored, buttons};
    if (const int step = wheel_step(memory, reading.wheel))
        return {PointerNews::Place::ignored, step};
    const PointerNews::Place place = place_of(reading.over, current);
    const bool click = place != PointerNews::Place::away && (buttons & key::left_button) != 0;
    return {place, click ? buttons : 0};
}

} // namespace vcc
