#include "core/gamepad.h"

#include "core/clock.h"
#include "core/window_state.h"
#include "platform/gamepad.h"

#include <allegro.h>

#include <algorithm>
#include <string>

namespace vcc {

/// A direction of a stick or hat.
struct PadWay {
    int x, y, key;
};

namespace {

constexpr std::array<PadWay, 4> all_ways{{{0, -1, KEY_UP}, {0, 1, KEY_DOWN}, {-1, 0, KEY_LEFT}, {1, 0, KEY_RIGHT}}};

/// By number of the button; on most pads these are A, B, X, Y and the two at the shoulders.
constexpr std::array<PadKey, 6> button_keys{
    {{'\r', KEY_ENTER}, {27, KEY_ESC}, {0, key_clear_field}, {0, KEY_F1}, {0, key_step_back}, {0, key_step_forward}}};

// A worn stick does not rest in its middle.
constexpr int way_begins = 64, way_stays = 40;

/// The direction in which a stick is pushed, after `before`; null if none.
const PadWay* way_of(Point stick, const PadWay* before) {
    const auto strength = [&](const PadWay& way) { return stick.x * way.x + stick.y * way.y; };
    if (before && strength(*before) >= way_stays)
        return before;
    const auto* const strongest = std::ranges::max_element(all_ways, {}, strength);
    return strength(*strongest) >= way_begins ? strongest : nullptr;
}

constexpr std::uint32_t first_repeat_ms = 400, next_repeat_ms = 150;
constexpr std::uint32_t look_ms = 1000;

bool wanted = false;
std::optional<std::uint32_t> looked_at_ms;
std::string plugged_in;
PadTyping typing;

/// Finds out which gamepads are plugged in; true if that has changed.
bool look() {
    looked_at_ms = ms_counter;
    std::string now = platform::gamepads();
    if (now == plugged_in)
        return false;
    plugged_in = std::move(now);
    remove_joystick();
    if (!plugged_in.empty()) {
        push_config_state();
        set_config_data(plugged_in.c_str(), static_cast<int>(plugged_in.size()));
        install_joystick(JOY_TYPE_AUTODETECT);
        pop_config_state();
    }
    typing.forget();
    return true;
}

/// Only the first stick and the last, the hat if there is one: others may be throttles.
PadReading read(const JOYSTICK_INFO& pad) {
    PadReading reading;
    for (int i = 0; i < std::min(pad.num_buttons, MAX_JOYSTICK_BUTTONS); ++i)
        reading.buttons |= pad.button[i].b ? 1U << i : 0U;
    std::size_t place = 0;
    for (int i = 0; i < std::min(pad.num_sticks, MAX_JOYSTICK_STICKS); ++i) {
        const JOYSTICK_STICK_INFO& stick = pad.stick[i];
        if (stick.num_axis < 2)
            continue;
        reading.sticks[place] = {stick.axis[0].pos, stick.axis[1].pos};
        place = 1;
    }
    return reading;
}

} // namespace

std::vector<PadKey> PadTyping::keys(std::span<const PadReading> pads, std::uint32_t now_ms) {
    const bool seen = held_.size() != pads.size();
    held_.resize(pads.size());
    std::vector<PadKey> typed;
    for (std::size_t pad = 0; pad < pads.size(); ++pad) {
        Pad& held = held_[pad];
        for (std::size_t button = 0; button < button_keys.size(); ++button)
            if ((pads[pad].buttons & ~held.buttons) >> button & 1U)
                typed.push_back(button_keys[button]);
        held.buttons = pads[pad].buttons;
        for (std::size_t stick = 0; stick < held.ways.size(); ++stick) {
            const PadWay* const way = way_of(pads[pad].sticks[stick], held.ways[stick]);
            const bool repeats = repeat_ && repeat_->pad == pad && repeat_->stick == stick;
            const bool turned = way != held.ways[stick],
                       due = repeats && now_ms - repeat_->since_ms >= repeat_->wait_ms;
            held.ways[stick] = way;
            if (repeats && !way)
                repeat_.reset();
            else if (way && (turned || due)) {
                typed.push_back({0, way->key});
                repeat_ = {pad, stick, now_ms, turned ? first_repeat_ms : next_repeat_ms};
            }
        }
    }
    if (!seen)
        return typed;
    repeat_.reset();
    return {};
}

void PadTyping::forget() {
    held_.clear();
    repeat_.reset();
}

void listen_to_gamepads(bool on) {
    wanted = on;
}

bool poll_gamepads() {
    if (!wanted)
        return false;
    if (!looked_at_ms || ms_counter - *looked_at_ms >= look_ms)
        look();
    if (num_joysticks == 0) {
        gamepad_used = false;
        return false;
    }
    if (switched_out)
        typing.forget();
    poll_joystick();
    std::vector<PadReading> readings;
    for (int pad = 0; pad < std::min(num_joysticks, MAX_JOYSTICKS); ++pad)
        readings.push_back(read(joy[pad]));
    const std::vector<PadKey> keys = typing.keys(readings, ms_counter);
    if (!keys.empty() && !look()) // a pad unplugged while pressed must not keep pressing
        for (const PadKey& key : keys)
            simulate_ukeypress(key.character, key.library_key | by_gamepad);
    return true;
}

void forget_gamepads() {
    typing.forget();
}

void release_gamepads() {
    remove_joystick();
    plugged_in.clear();
    looked_at_ms.reset();
}

} // namespace vcc
