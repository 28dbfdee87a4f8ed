// The input loop, one step, a whole screen and a help page, with simulated keys and pointer on a display in memory.
#include "core/gamepad.h"
#include "core/mouse_buttons.h"
#include "core/window_state.h"
#include "interaction/help.h"
#include "interaction/keys.h"
#include "interaction/player_input.h"
#include "interaction/screen_run.h"
#include "support/screen_world.h"
#include "text/fonts.h"

#include <allegro/internal/aintern.h>

#include <deque>
#include <utility>

// The test plays the keyboard.
static std::deque<std::pair<int, int>> waiting_keys; // character, key
int keypressed() {
    return !waiting_keys.empty();
}
int ureadkey(int* library_key) {
    const auto [character, number] = waiting_keys.front();
    waiting_keys.pop_front();
    *library_key = number;
    return character;
}
void clear_keybuf() {
    waiting_keys.clear();
}

namespace vcc {
namespace {

using Event = std::function<void()>;

/// All keys are up again before anybody looks.
Event press(int character, int library_key, int shifts = 0) {
    return [=]() mutable {
        _key_shifts = shifts;
        keyboard_ucallback(character, &library_key);
        waiting_keys.emplace_back(character, library_key);
        _key_shifts = 0;
    };
}
Event point_at_row(int row) {
    return [=] {
        mouse_x = 20;
        mouse_y = 14 * row + 5;
    };
}
Event hold(int buttons) {
    return [=] {
        mouse_b = buttons;
        mouse_callback(MOUSE_FLAG_LEFT_DOWN);
    };
}
const Event close_window = [] { close_requested = 1; };
const Event rest = [] {};
constexpr int below_all = 40; ///< a row without a slot

/// Slot 0 is a background, 1 and 2 are buttons, 3 is a field; all in cells of 8 x 14, 5 characters wide, a row each.
class Screen : public testing::Test {
protected:
    Screen() {
        configure_fonts();
        target_.reset(create_bitmap(800, 600));
        clear_bitmap(target_.get());
        Slot slot = test::make_slot("     ", {{&Slot::font, 6}, {&Slot::box_width, 40}, {&Slot::box_height, 13}});
        for (int i = 0; i < 4; ++i) {
            test::set_fields(slot, {{&Slot::row, i}, {&Slot::toggle, i == 0 ? -1 : i}});
            set_.slots.push_back(slot);
        }
        test::set_fields(set_.slots[3], {{&Slot::input_mode, 2}, {&Slot::size, 4}});
        set_.toggles = set_.slots;
        set_.toggles[3].back_colour = 13;
        player_input = {};
        mouse_b = 0;
        mouse_z = 0;
        watch_mouse_buttons();
        watch_keys();
        close_requested = 0;
        point_at_row(below_all)();
        // One event in every other frame: a step that ends empties the keyboard when the next begins.
        owner_.every_frame = [this] {
            if (++frames_ > 1000)
                close_window(); // a test that waits for ever ends
            if (frames_ % 2 == 0 || events_.empty())
                return;
            events_.front()();
            events_.pop_front();
        };
    }
    int run(std::deque<Event> events) {
        events_ = std::move(events);
        BITMAP* target = target_.get();
        return static_cast<int>(run_screen(target, set_, owner_));
    }

    test::StandInDisplay display_;
    test::ScratchFolder folder_;
    BitmapPtr target_;
    SlotSet set_;
    ScreenOwner owner_;
    std::deque<Event> events_;
    int frames_ = 0;
};

TEST_F(Screen, EnterActivatesTheSlotThatIsPointedAt) {
    owner_.activated = [](int slot) { return std::optional(ScreenResult{slot}); };
    // '-' has the number of Alt+X
    EXPECT_EQ(run({point_at_row(2), rest, press('-', KEY_MINUS), press(13, KEY_ENTER)}), 2);
}

TEST_F(Screen, WhatIsDrawnIsShownWhateverTheCurrentSlotIs) {
    set_.slots[1].toggle = 0; // it has no look of its own
    set_.slots[2].back_colour = 12;
    set_.toggles[2].back_colour = 13;
    std::vector<int> seen;
    const Event look = [&] { seen.push_back(display_.at(10, 14 * 2 + 5)); };
    run({look, point_at_row(2), rest, look, point_at_row(1), rest, look, close_window});
    EXPECT_EQ(seen, (std::vector{pixel_of(12), pixel_of(13), pixel_of(12)}));
}

TEST_F(Screen, WhatATextLeavesOutsideItsFieldIsWipedWhenItIsCut) {
    set_.slots[0].buffer = 4;
    graphic_buffers[4].reset(create_bitmap(800, 600));
    clear_to_color(graphic_buffers[4].get(), pixel_of(13));
    store_text(set_.slots[3].text, "much too long");
    const auto behind = [this] { return display_.at(60, 14 * 3 + 5); };
    run({point_at_row(3), rest, [&] { EXPECT_EQ(behind(), 0); }, press('a', KEY_A), rest,
         [&] { EXPECT_EQ(behind(), pixel_of(13)); }, close_window});
    EXPECT_TRUE(events_.empty()) << "it was not looked at";
    graphic_buffers[4].reset();
}

TEST_F(Screen, WhatNobodyCanChooseIsToldInTheLog) {
    folder_.write("data/logfiles/x", "");
    const auto told = [this](const char* counts) {
        return folder_.log().find("menu.slt: nothing on it can be chosen: of its " + std::string(counts)) !=
               std::string::npos;
    };
    set_.file = "menu.slt";
    set_.slots[1].draw_flags[0] = 'n';
    test::set_fields(set_.slots[2], {{&Slot::dest_x, -40}, {&Slot::dest_y, 5}});
    test::set_fields(set_.slots[3], {{&Slot::graphic, 77}, {&Slot::buffer, 123456}});
    EXPECT_EQ(run({rest, press(27, KEY_ESC)}), 0);
    EXPECT_EQ(folder_.log(), "") << "its last column of pixels is seen";
    set_.slots[2].dest_x = -900;
    EXPECT_EQ(run({rest, press(27, KEY_ESC)}), 0);
    EXPECT_TRUE(told("4 slots 1 take no focus, 1 are hidden, 1 lie outside the picture, 1 name a buffer without"));
    set_.slots.resize(1);
    EXPECT_EQ(run({}), 45);
    EXPECT_TRUE(told("1 slots 1 take no focus")) << folder_.log();
}

TEST_F(Screen, PointerOnAButtonIsReportedOnce) {
    std::vector<int> over;
    owner_.pointer_over = [&](int slot) { over.push_back(slot); };
    run({point_at_row(1), rest, point_at_row(below_all), rest, close_window});
    EXPECT_EQ(over, (std::vector{1, 1, 1})) << "away at the start, over, away";
}

TEST_F(Screen, OnlyTheRightButtonAloneStepsBack) {
    owner_.step = [](int, bool) { ADD_FAILURE() << "the middle button is held, too"; };
    EXPECT_EQ(run({hold(2 | 4)}), 0) << "a right click counts anywhere";
}

TEST_F(Screen, PressesAreHeardOnceAndTheWheelNotchByNotch) {
    set_.slots[0].toggle = 0; // the background takes the focus, but no click
    std::vector<int> pressed;
    owner_.activated = [&](int slot) {
        pressed.push_back(slot);
        return ScreenOutcome();
    };
    run({point_at_row(2), rest, hold(1), rest, rest, hold(3), rest, hold(0), rest, point_at_row(0), rest, hold(1), rest,
         hold(0), close_window});
    EXPECT_EQ(pressed, std::vector{2});
    close_requested = 0;
    point_at_row(below_all)();
    set_.slots[0].toggle = -1;
    owner_.activated = [](int slot) { return std::optional(ScreenResult{slot}); };
    EXPECT_EQ(run({rest, [] { mouse_z = 2; }, rest, rest, press(13, KEY_ENTER)}), 2) << "from 0 back to 3, then 2";
}

TEST_F(Screen, GamepadsActOnTheCurrentSlotWhateverTheKeyboardHolds) {
    std::vector<int> stepped;
    owner_.step = [&](int slot, bool forward) { stepped.push_back(forward ? slot : -slot); };
    owner_.activated = [](int slot) { return std::optional(ScreenResult{slot}); };
    const auto type = [](int character, int key) { return press(character, key | by_gamepad, KB_ALT_FLAG); };
    EXPECT_EQ(run({point_at_row(2), rest, type(0, key_step_back), rest, [] { EXPECT_TRUE(gamepad_used); },
                   type(0, key_step_forward), rest, type(13, KEY_ENTER)}),
              2);
    EXPECT_EQ(stepped, (std::vector{-2, 2}));
    press('a', KEY_A)();
    EXPECT_FALSE(gamepad_used);
}

TEST_F(Screen, ASkippedSlotUnderThePointerLeavesKeysAndClicksAlive) {
    set_.slots[1].draw_flags[2] = 'x';
    owner_.activated = [](int slot) { return std::optional(ScreenResult{slot}); };
    EXPECT_EQ(run({point_at_row(1), rest, press(27, KEY_ESC)}), 0);
    EXPECT_EQ(run({rest, hold(1)}), 2) << "for the slot that has the focus";
}

TEST_F(Screen, KeysKeepTheModifiersTheyWerePressedWith) {
    EXPECT_EQ(run({press(0, KEY_X), press(0, KEY_X, KB_ALT_FLAG)}), 45);

    store_text(set_.slots[3].text, "ab  "); // keys dropped at a field's edge lend their modifiers to nobody
    const Event to_the_edge = [] { std::ranges::for_each("1234567", [](char) { press(0, KEY_RIGHT)(); }); };
    events_ = {point_at_row(3), rest, to_the_edge};
    events_.insert(events_.end(), 6, rest);
    events_.insert(events_.end(), {press(0, KEY_RIGHT, KB_CTRL_FLAG), rest, press('Z', KEY_Z), rest, close_window});
    run(events_);
    EXPECT_EQ(text_of(set_.slots[3].text), "aZ  ");
}

TEST_F(Screen, FieldTakesTextAndAFullOneIsFinished) {
    const Event look = [this] {
        EXPECT_EQ(display_.at(30, 14 * 3 + 12), pixel_of(13)) << "the editing look reaches the display at once";
    };
    const Event more = [] {
        for (int character : {'b', 'c', '-'})
            press(character, KEY_C)();
    };
    EXPECT_EQ(run({point_at_row(3), press('a', KEY_A), look, more, rest, rest, press(27, KEY_ESC)}), 0);
    EXPECT_EQ(text_of(set_.slots[3].text), "abc-");
    EXPECT_EQ(text_of(set_.toggles[3].text), "abc-");
}

/// A message set of 36 slots whose first names a text window.
class Help : public Screen {
protected:
    Help() {
        set_.slots[0].graphic = 20;
        store_text(set_.slots[0].text, "TEXT-WIN");
        set_.slots.resize(36, set_.slots[1]);
        folder_.write("help.txt", "+12\n*2\n*13\nf\nc\nw\ns\nS\nx\ny\n-xHello\n#\n");
    }
    int show(int number, const char* file) {
        Slot requester = test::make_slot("", {{&Slot::help_number, number}});
        store_text(requester.help_file, file);
        events_ = {rest, press(0, key_step_forward | by_gamepad), rest, press(27, KEY_ESC)};
        return show_help({target_.get(), save_.get(), &set_, &requester, owner_.every_frame});
    }
    BitmapPtr save_{create_bitmap(800, 600)};
};

TEST_F(Help, SaysSoWhenThereIsNone) {
    for (const auto& [number, file, found_file, found_entry] :
         {std::tuple(12, "help.txt", true, true), {13, "help.txt", true, false}, {12, "nowhere.txt", false, false}}) {
        EXPECT_EQ(show(number, file), 27);
        EXPECT_EQ(text_of(set_.slots[4].text).empty(), found_file);
        EXPECT_EQ(text_of(set_.slots[5].text).empty(), found_entry);
    }
    set_.slots.resize(9);
    EXPECT_EQ(show(12, "help.txt"), 27) << "too few slots";
}

TEST_F(Help, OfAShortMessageSetIsOnePage) {
    for (const std::size_t count : {35u, 13u, 10u}) { // 13: no button to close it
        set_.slots.resize(count);
        for (Slot& slot : set_.slots)
            slot.toggle = -1;
        set_.toggles = set_.slots;
        EXPECT_EQ(show(12, "help.txt"), 27);
        EXPECT_TRUE(events_.empty()) << count << " slots: it waits for the key";
    }
}

} // namespace
} // namespace vcc
