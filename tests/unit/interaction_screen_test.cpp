// The input loop, one step, a whole screen and a help page, with simulated keys and pointer on a display in memory.
#include "core/layout.h"
#include "display/switching.h"
#include "interaction/focus.h"
#include "interaction/help.h"
#include "interaction/keys.h"
#include "interaction/pointer_frame.h"
#include "interaction/screen_run.h"
#include "interaction/text_edit.h"
#include "screen/colours.h"
#include "screen/text_window.h"
#include "support/slots.h"
#include "support/stand_in_display.h"
#include "text/fonts.h"

#include <gtest/gtest.h>

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

Event press(int character, int library_key) {
    return [=] { waiting_keys.emplace_back(character, library_key); };
}
Event point(int x, int y) {
    return [=] {
        mouse_x = x;
        mouse_y = y;
    };
}
Event point_at_row(int row) {
    return point(20, 14 * row + 5);
}
Event hold(int buttons) {
    return [=] { mouse_b = buttons; };
}
const Event close_window = [] { close_requested = 1; };
const Event escape = press(27, KEY_ESC);

/// Slot 0 is a background, 1 and 2 are buttons, 3 is a field; all in cells of 8 x 14, 5 characters wide, a row each.
class Screen : public testing::Test {
protected:
    Screen() {
        layout_width = 800;
        layout_height = 600;
        configure_fonts("VELDOR_VCC");
        target_.reset(create_bitmap(800, 600));
        clear_bitmap(target_.get());
        Slot slot = test::make_slot("     ", {{&Slot::font, 6}, {&Slot::box_width, 40}, {&Slot::box_height, 13}});
        for (int i = 0; i < 4; ++i) {
            test::set_fields(slot, {{&Slot::row, i}, {&Slot::toggle, i == 0 ? -1 : i}, {&Slot::back_colour, i}});
            set_.slots.push_back(slot);
        }
        test::set_fields(set_.slots[3], {{&Slot::input_mode, 2}, {&Slot::size, 4}});
        set_.toggles = set_.slots;
        for (Slot& toggle : set_.toggles)
            toggle.back_colour += 10;
        pointer_memory() = {};
        pointer_by_keyboard = insert_mode = 0;
        mouse_b = 0;
        close_requested = 0;
        clear_keybuf();
        point(600, 500)();
        owner_.every_frame = [this] {
            ++frames_;
            if (next_event_ < events_.size())
                events_[next_event_++]();
            else if (frames_ > 1000)
                close_window(); // a test that waits for ever ends
        };
        owner_.command = [this](int code) {
            commands_.push_back(code);
            return std::optional<int>();
        };
    }

    /// One event in every other frame: a step that ends empties the keyboard when the next begins.
    void play(std::initializer_list<Event> events) {
        events_.clear();
        next_event_ = 0;
        for (const auto& event : events) {
            events_.push_back(event);
            events_.emplace_back([] {});
        }
    }
    int run(std::initializer_list<Event> events) {
        play(events);
        return run_screen(target_.get(), set_, owner_);
    }
    /// The colour of a row's box on the display.
    int shown(int row) const {
        for (int colour = 0; colour < 30; ++colour)
            if (display_.at(30, 14 * row + 12) == pixel_of(colour))
                return colour;
        return -1;
    }

    test::StandInDisplay display_;
    BitmapPtr target_;
    SlotSet set_;
    ScreenOwner owner_;
    std::vector<int> commands_;
    std::vector<Event> events_;
    std::size_t next_event_ = 0;
    int frames_ = 0;
};

TEST_F(Screen, KeysMoveTheFocusAndEnterActivates) {
    std::vector<int> activated;
    owner_.activated = [&](int slot) {
        activated.push_back(slot);
        return activated.size() == 2 ? std::optional(7) : std::nullopt;
    };
    const Event enter = press(13, KEY_ENTER), down = press(0, KEY_DOWN);
    EXPECT_EQ(run({enter, press('q', KEY_Q), down, down, point_at_row(2), enter}), 7);
    EXPECT_EQ(activated, (std::vector{1, 2}));
    EXPECT_EQ(commands_, (std::vector{key::down, key::down, key::over_other_slot}));
}

TEST_F(Screen, EscapeRightClickAltXAndTheCloseButtonEndOrStay) {
    std::vector<int> stepped;
    owner_.right_click = [&](int slot) { stepped.push_back(slot); };
    EXPECT_EQ(run({point_at_row(2), hold(2), hold(0), escape}), 0);
    EXPECT_EQ(stepped, std::vector{2});
    key_shifts = KB_ALT_FLAG;
    EXPECT_EQ(run({press(0, KEY_X)}), 45);
    key_shifts = 0;
    EXPECT_EQ(run({close_window}), 45);
}

TEST_F(Screen, NothingToSelectLeavesWithALogLine) {
    const test::ScratchFolder folder;
    folder.write("data/logfiles/x", "");
    for (Slot& slot : set_.slots)
        slot.toggle = -1;
    EXPECT_EQ(run({}), 45);
    EXPECT_NE(folder.log().find("no slot that can be selected"), std::string::npos);
}

TEST_F(Screen, ButtonIsHighlightedOnceWhileThePointerIsOnIt) {
    std::vector<int> over, looks;
    owner_.pointer_over = [&](int slot) { over.push_back(slot); };
    const Event look = [&] { looks.push_back(shown(1)); };
    run({point_at_row(1), look, point(600, 500), look, close_window});
    EXPECT_EQ(looks, (std::vector{11, 1}));
    EXPECT_EQ(over, (std::vector{1, 1, 1})) << "away at the start, over, away";
}

TEST_F(Screen, SkippedSlotUnderThePointerLeavesTheKeysAlive) {
    set_.slots[2].draw_flags[2] = 'x';
    run({point_at_row(2), press(0, KEY_PGUP), close_window});
    EXPECT_EQ(commands_, (std::vector{key::over_other_slot, key::page_up}));
}

TEST_F(Screen, FieldTakesTextAndAFullOneIsFinished) {
    const Event rest = [] {};
    const Event look = [this] { EXPECT_EQ(shown(3), 13) << "the editing look reaches the display at once"; };
    const Event more = [] {
        for (int character : {'b', 'c', '-'}) // '-' has the number of Alt+X
            press(character, KEY_C)();
    };
    EXPECT_EQ(run({point_at_row(3), press('a', KEY_A), look, more, rest, rest, escape}), 0);
    EXPECT_EQ(text_of(set_.slots[3].text), "abc-");
}

class Help : public Screen {
protected:
    Help() {
        set_.slots.resize(40, set_.slots[1]);
        for (std::size_t i = 0; i < set_.slots.size(); ++i)
            test::set_fields(set_.slots[i], {{&Slot::row, static_cast<int>(i)}, {&Slot::toggle, -1}});
        set_.toggles = set_.slots;
        store_text(set_.slots[0].text, "TEXT-WIN");
        set_.slots[0].graphic = 20;
        text_windows[20] = {};
        requester_.help_number = 12;
        store_text(requester_.help_file, "help.txt");
        folder_.write("help.txt", "+12\np2\nn7\nf\nc\nw3\ns\nS\nx\ny\n-xHello\n#\n+7\n-xPage\n#\n");
        folder_.write("data/logfiles/x", "");
        save_.reset(create_bitmap(800, 600));
        clear_to_color(target_.get(), makecol(1, 2, 3));
    }
    int open(std::initializer_list<Event> events) {
        play(events);
        return show_help({target_.get(), save_.get(), &set_, &screen_variable_, &requester_, owner_.every_frame});
    }
    bool enabled(std::size_t slot) const { return !is_hidden(set_.slots[slot]) && set_.slots[slot].toggle != -1; }

    test::ScratchFolder folder_;
    Slot requester_{};
    BitmapPtr save_;
    int screen_variable_ = 1;
};

TEST_F(Help, PagesTurnAndTheScreenComesBack) {
    std::vector<std::vector<bool>> seen; // Close, another button, Back, Next
    const Event look = [&] { seen.push_back({enabled(13), enabled(12), enabled(33), enabled(35)}); };
    const Event look_inside = [&] {
        look();
        EXPECT_EQ(screen_variable_, -1);
        EXPECT_EQ(text_windows[20].colour, 3);
    };
    text_windows[20].colour = 9;
    set_.slots[13].action = 77;
    EXPECT_EQ(open({look_inside, point_at_row(35), hold(1), hold(0), look, point_at_row(33), hold(1), hold(0), look,
                    press(0, KEY_F4), point_at_row(13), hold(1)}),
              77);
    EXPECT_EQ(seen, (std::vector<std::vector<bool>>{{1, 0, 0, 1}, {1, 0, 1, 0}, {1, 0, 0, 1}}));
    EXPECT_EQ(screen_variable_, 1);
    EXPECT_EQ(text_windows[20].colour, 9);
    for (int y = 0; y < 600; ++y)
        for (int x = 0; x < 800; ++x)
            ASSERT_TRUE(getpixel(target_.get(), x, y) == makecol(1, 2, 3) && display_.at(x, y) == makecol(1, 2, 3));
    EXPECT_FALSE(folder_.read("factory.pcx").empty());
}

TEST_F(Help, SaysSoWhenThereIsNone) {
    const struct {
        int number;
        const char *file, *messages;
    } cases[] = {{12, "help.txt", "|"},
                 {13, "help.txt", "|N O   H E L P   A V A I L A B L E!"},
                 {0, "help.txt", "|N O   H E L P   A V A I L A B L E!"},
                 {12, "nowhere.txt", "Error:N O   H E L P   A V A I L A B L E!|N O   H E L P   A V A I L A B L E!"}};
    for (const auto& c : cases) {
        requester_.help_number = c.number;
        store_text(requester_.help_file, c.file);
        EXPECT_EQ(open({escape}), 27);
        EXPECT_EQ(std::string(text_of(set_.slots[4].text)) + "|" + std::string(text_of(set_.slots[5].text)),
                  c.messages);
    }
    set_.slots.resize(20);
    open({});
    EXPECT_NE(folder_.log().find("20 slots"), std::string::npos);
}

} // namespace
} // namespace vcc
