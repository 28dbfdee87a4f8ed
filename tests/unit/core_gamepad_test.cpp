// What gamepads type, from what they hold.
#include "core/gamepad.h"

#include <allegro.h>
#include <gtest/gtest.h>

namespace vcc {
namespace {

using Keys = std::vector<int>;

PadReading pad(unsigned buttons, Point stick = {}, Point hat = {}) {
    return {buttons, {stick, hat}};
}

TEST(Pads, TypeWhatIsPressedOnceAndHeldWaysAgain) {
    constexpr Point rest{30, -30}, down{20, 90}, less{45, 45}, right{127, 0}, left{-128, 0};
    const Keys buttons{KEY_ENTER, KEY_ESC, key_clear_field, KEY_F1, key_step_back, key_step_forward};
    const struct {
        const char* rule;
        PadReading pad;
        std::uint32_t later_ms;
        Keys keys;
    } rows[] = {
        {"held from the start", pad(1, down), 10, {}},
        {"a worn stick does not stand in its middle", pad(0, rest), 10, {}},
        {"buttons", pad(0x3F, rest), 10, buttons},
        {"held", pad(0x7F, rest), 600, {}},
        {"a way", pad(0, down), 10, {KEY_DOWN}},
        {"not again at once", pad(0, down), 390, {}},
        {"again", pad(0, down), 10, {KEY_DOWN}},
        {"and again, sooner", pad(0, less), 150, {KEY_DOWN}},
        {"let go", pad(0, rest), 600, {}},
        {"the latest way goes on", pad(0, right, left), 10, {KEY_RIGHT, KEY_LEFT}},
        {"alone", pad(0, right, left), 400, {KEY_LEFT}},
        {"until it is let go", pad(0, right, rest), 600, {}},
        {"across the middle", pad(0, left), 10, {KEY_LEFT}},
    };
    std::uint32_t now_ms = UINT32_MAX - 300; // the tick wraps
    PadTyping typing;
    for (const auto& row : rows) {
        Keys keys;
        for (const PadKey& key : typing.keys(std::vector{row.pad}, now_ms += row.later_ms))
            keys.push_back(key.library_key);
        EXPECT_EQ(keys, row.keys) << row.rule;
    }
}

} // namespace
} // namespace vcc
