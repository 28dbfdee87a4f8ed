// The input loop, one step, a whole screen and a help page, with simulated keys and pointer on a display in memory.
#include "core/handles.h"
#include "core/layout.h"
#include "core/text.h"
#include "display/switching.h"
#include "interaction/focus.h"
#include "interaction/help.h"
#include "interaction/keys.h"
#include "interaction/pointer_frame.h"
#include "interaction/screen_run.h"
#include "interaction/text_edit.h"
#include "screen/colours.h"
#include "screen/text_window.h"
#include "support/allegro_none.h"
#include "text/fonts.h"

#include <gtest/gtest.h>

#include <deque>
#include <initializer_list>
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

/// Slot 0 is a background, 1 and 2 are buttons, 3 is a field; all in cells of 8 x 14, 5 characters wide, a row each.
class Screen : public testing::Test {
protected:
    Screen() {
        test::start_library();
        layout_width = 800;
        layout_height = 600;
        configure_fonts("VELDOR_VCC");
        display_.reset(create_bitmap(800, 600));
        target_.reset(create_bitmap(800, 600));
        clear_bitmap(target_.get());
        screen = display_.get();
        for (int i = 0; i < 4; ++i) {
            Slot slot{};
            slot.font = 6;
            slot.row = i;
            slot.toggle = i == 0 ? -1 : i;
            slot.box_width = 40;
            slot.box_height = 13;
            slot.back_colour = i;
            store_text(slot.text, "     ");
            set_.slots.push_back(slot);
        }
        set_.slots[3].input_mode = 2;
        set_.slots[3].size = 4;
        set_.toggles = set_.slots;
        for (Slot& toggle : set_.toggles)
            toggle.back_colour += 10;
        pointer_memory() = {};
        pointer_by_keyboard = insert_mode = 0;
        point(600, 500);
        mouse_b = 0;
        close_requested = 0;
        clear_keybuf();
        owner_.every_frame = [this] {
            ++frames_;
            if (next_event_ < events_.size())
                events_[next_event_++]();
            else if (frames_ > 1000)
                close_requested = 1; // a test that waits for ever ends
        };
    }
    ~Screen() override { screen = nullptr; }

    static void point(int x, int y) {
        mouse_x = x;
        mouse_y = y;
    }
    static void point_at_row(int row) { point(20, 14 * row + 5); }
    static void press(int character, int library_key) { waiting_keys.emplace_back(character, library_key); }

    /// One event in every other frame: a step that ends empties the keyboard when the next begins.
    void play(std::initializer_list<std::function<void()>> events) {
        events_.clear();
        next_event_ = 0;
        for (const auto& event : events) {
            events_.push_back(event);
            events_.emplace_back([] {});
        }
    }

    int pixel(BITMAP* bitmap, int row) const {
        for (int colour = 0; colour < 30; ++colour)
            if (getpixel(bitmap, 30, 14 * row + 12) == pixel_of(colour))
                return colour;
        return -1;
    }
    int shown(int row) const { return pixel(display_.get(), row); }

    BitmapPtr display_, target_;
    SlotSet set_;
    ScreenOwner owner_;
    std::vector<std::function<void()>> events_;
    std::size_t next_event_ = 0;
    int frames_ = 0;
};

TEST_F(Screen, KeysMoveTheFocusAndEnterActivates) {
    std::vector<int> activated, commands;
    owner_.activated = [&](int slot) {
        activated.push_back(slot);
        return std::optional<int>(activated.size() == 2 ? 7 : std::optional<int>());
    };
    owner_.command = [&](int code) {
        commands.push_back(code);
        return std::optional<int>();
    };
    const auto enter = [] { press(13, KEY_ENTER); };
    play({enter, [] { press('q', KEY_Q); }, [] { press(0, KEY_DOWN); }, [] { press(0, KEY_DOWN); },
          [] { point_at_row(2); }, enter});
    EXPECT_EQ(run_screen(target_.get(), set_, owner_), 7);
    EXPECT_EQ(activated, (std::vector{1, 2}));
    EXPECT_EQ(commands, (std::vector{key::down, key::down, key::over_other_slot}));
}

TEST_F(Screen, EscapeRightClickAltXAndTheCloseButtonEndOrStay) {
    std::vector<int> stepped;
    owner_.right_click = [&](int slot) { stepped.push_back(slot); };
    play({[] { point_at_row(2); }, [] { mouse_b = 2; }, [] { mouse_b = 0; }, [] { press(27, KEY_ESC); }});
    EXPECT_EQ(run_screen(target_.get(), set_, owner_), 0);
    EXPECT_EQ(stepped, std::vector{2});
    play({[] {
        key_shifts = KB_ALT_FLAG;
        press(0, KEY_X);
    }});
    EXPECT_EQ(run_screen(target_.get(), set_, owner_), 45);
    key_shifts = 0;
    play({[] { close_requested = 1; }});
    EXPECT_EQ(run_screen(target_.get(), set_, owner_), 45);
}

TEST_F(Screen, NothingToSelectLeavesWithALogLine) {
    const test::ScratchFolder folder;
    folder.write("data/logfiles/x", "");
    for (Slot& slot : set_.slots)
        slot.toggle = -1;
    EXPECT_EQ(run_screen(target_.get(), set_, owner_), 45);
    EXPECT_NE(folder.log().find("no slot that can be selected"), std::string::npos);
}

TEST_F(Screen, ButtonIsHighlightedOnceWhileThePointerIsOnIt) {
    std::vector<int> over;
    owner_.pointer_over = [&](int slot) { over.push_back(slot); };
    play({[] { point_at_row(1); },
          [this] {
              EXPECT_EQ(shown(1), 11);
              point(600, 500);
          },

          [this] {
              EXPECT_EQ(shown(1), 1);
              close_requested = 1;
          }});
    run_screen(target_.get(), set_, owner_);
    EXPECT_EQ(over, (std::vector{1, 1, 1})) << "away at the start, over, away";
}

TEST_F(Screen, SkippedSlotUnderThePointerLeavesTheKeysAlive) {
    set_.slots[2].draw_flags[2] = 'x';
    std::vector<int> commands;
    owner_.command = [&](int code) {
        commands.push_back(code);
        return std::optional<int>();
    };
    play({[] { point_at_row(2); }, [] { press(0, KEY_PGUP); }, [] { close_requested = 1; }});
    run_screen(target_.get(), set_, owner_);
    EXPECT_EQ(commands, (std::vector{key::over_other_slot, key::page_up}));
}

TEST_F(Screen, FieldTakesTextAndAFullOneIsFinished) {
    play({[] { point_at_row(3); }, [] { press('a', KEY_A); },
          [this] {
              EXPECT_EQ(shown(3), 13) << "the field's editing look reaches the display at once";
              for (int character : {'b', 'c', '-'}) // '-' has the number of Alt+X
                  press(character, KEY_C);
          },
          [] {}, [] {}, [] { press(27, KEY_ESC); }});
    EXPECT_EQ(run_screen(target_.get(), set_, owner_), 0);
    EXPECT_EQ(text_of(set_.slots[3].text), "abc-");
}

class Help : public Screen {
protected:
    Help() {
        for (int i = 4; i < 40; ++i)
            set_.slots.push_back(set_.slots[1]);
        for (std::size_t i = 0; i < set_.slots.size(); ++i) {
            set_.slots[i].row = static_cast<int>(i);
            set_.slots[i].toggle = -1;
        }
        set_.toggles = set_.slots;
        Slot& window = set_.slots[0];
        store_text(window.text, "TEXT-WIN");
        window.graphic = 20;
        text_windows[20] = {};
        requester_.help_number = 12;
        store_text(requester_.help_file, "help.txt");
        folder_.write("help.txt", "+12\np2\nn7\nf\nc\nw3\ns\nS\nx\ny\n-xHello\n#\n+7\n-xPage\n#\n");
        folder_.write("data/logfiles/x", "");
        save_.reset(create_bitmap(800, 600));
        clear_to_color(target_.get(), makecol(1, 2, 3));
    }
    int open() {
        return show_help({target_.get(), save_.get(), &set_, &screen_variable_, &requester_, owner_.every_frame});
    }
    static std::function<void()> at(int row) {
        return [row] { point_at_row(row); };
    }
    bool enabled(std::size_t slot) const { return !is_hidden(set_.slots[slot]) && set_.slots[slot].toggle != -1; }

    test::ScratchFolder folder_;
    Slot requester_{};
    BitmapPtr save_;
    int screen_variable_ = 1;
};

TEST_F(Help, PagesTurnAndTheScreenComesBack) {
    const auto press_button = [] { mouse_b = 1; };
    const auto release = [] { mouse_b = 0; };
    int turns = 0;
    const auto turned = [&](bool back, bool forward) {
        ++turns;
        EXPECT_TRUE(enabled(33) == back && enabled(35) == forward) << "turn " << turns;
    };
    text_windows[20].colour = 9;
    set_.slots[13].action = 77;
    play({[this] {
              EXPECT_EQ(screen_variable_, -1);
              EXPECT_EQ(text_windows[20].colour, 3);
              EXPECT_TRUE(!enabled(33) && enabled(35) && enabled(13) && !enabled(12));
          },
          at(35), press_button, release, [&] { turned(true, false); }, at(33), press_button, release,
          [&] { turned(false, true); }, [] { press(0, KEY_F4); }, at(13), press_button});
    EXPECT_EQ(open(), 77);
    EXPECT_EQ(turns, 2);
    EXPECT_EQ(screen_variable_, 1);
    EXPECT_EQ(text_windows[20].colour, 9);
    for (BITMAP* bitmap : {target_.get(), display_.get()})
        for (int y = 0; y < 600; ++y)
            for (int x = 0; x < 800; ++x)
                ASSERT_EQ(getpixel(bitmap, x, y), makecol(1, 2, 3)) << x << ' ' << y;
    EXPECT_FALSE(folder_.read("factory.pcx").empty());
}

TEST_F(Help, SaysSoWhenThereIsNone) {
    const auto messages = [&] {
        play({[] { press(27, KEY_ESC); }});
        EXPECT_EQ(open(), 27);
        return std::string(text_of(set_.slots[4].text)) + "|" + std::string(text_of(set_.slots[5].text));
    };
    const std::string none = "N O   H E L P   A V A I L A B L E!";
    EXPECT_EQ(messages(), "|");
    requester_.help_number = 13;
    EXPECT_EQ(messages(), "|" + none);
    requester_.help_number = 0;
    EXPECT_EQ(messages(), "|" + none);
    requester_.help_number = 12;
    store_text(requester_.help_file, "nowhere.txt");
    EXPECT_EQ(messages(), "Error:" + none + "|" + none);
    set_.slots.resize(20);
    open();
    EXPECT_NE(folder_.log().find("20 slots"), std::string::npos);
}

} // namespace
} // namespace vcc
