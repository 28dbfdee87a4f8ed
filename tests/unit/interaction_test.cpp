// The rules of interaction: keys, editing, focus, what the pointer means, help files.
#include "core/layout.h"
#include "core/text.h"
#include "interaction/focus.h"
#include "interaction/focus_move.h"
#include "interaction/help.h"
#include "interaction/keys.h"
#include "interaction/pointer_frame.h"
#include "interaction/text_edit.h"
#include "support/allegro_none.h"
#include "text/fonts.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace vcc {
namespace {

constexpr int plain = 0, shift = KB_SHIFT_FLAG, ctrl = KB_CTRL_FLAG, alt = KB_ALT_FLAG;

TEST(Keys, HaveTheProgramsOwnCodes) {
    struct Row {
        int character, library_key, shifts, code;
        KeyKind kind;
    };
    constexpr auto typed = KeyKind::character, editing = KeyKind::editing, ending = KeyKind::ending;
    const Row rows[] = {
        {8, KEY_BACKSPACE, plain, 8, editing},
        {8, KEY_BACKSPACE, shift, 8, editing},
        {8, KEY_BACKSPACE, ctrl, 63, typed},
        {9, KEY_TAB, plain, 9, ending},
        {0, KEY_TAB, shift, 9, ending},
        {13, KEY_ENTER, plain, 13, ending},
        {13, KEY_ENTER_PAD, plain, 13, ending},
        {13, KEY_ENTER, ctrl, 67, typed},
        {27, KEY_ESC, plain, 27, ending},
        {27, KEY_ESC, ctrl, 59, typed},
        {0, KEY_F11, ctrl, 69, ending},
        {0, KEY_F12, shift, 70, ending},
        {0, KEY_F12, alt, 70, ending},
        {0, KEY_INSERT, plain, 82, editing},
        {0, KEY_INSERT, ctrl, 82, editing},
        {127, KEY_DEL, plain, 83, editing},
        {127, KEY_DEL, ctrl, 83, editing},
        {0, KEY_HOME, plain, 71, ending},
        {0, KEY_HOME, ctrl, 117, ending},
        {0, KEY_HOME, alt, 71, ending},
        {0, KEY_END, plain, 79, ending},
        {0, KEY_END, ctrl, 119, ending},
        {0, KEY_PGUP, plain, 73, ending},
        {0, KEY_PGUP, ctrl, 132, ending},
        {0, KEY_PGDN, plain, 81, ending},
        {0, KEY_PGDN, ctrl, 118, ending},
        {0, KEY_LEFT, plain, 75, editing},
        {0, KEY_LEFT, ctrl, 115, editing},
        {0, KEY_RIGHT, shift, 77, editing},
        {0, KEY_RIGHT, ctrl, 116, editing},
        {0, KEY_UP, plain, 72, ending},
        {0, KEY_UP, ctrl, 141, ending},
        {0, KEY_DOWN, plain, 80, ending},
        {0, KEY_DOWN, ctrl, 145, ending},
        {0, KEY_W, alt, 333, ending},
        {0, KEY_X, alt, 45, ending},
        {24, KEY_X, ctrl, 'x', typed},
        // what shares its number with a key stays a character
        {'/', KEY_SLASH, plain, '/', typed},
        {'7', KEY_7_PAD, plain, '7', typed},
        {'-', KEY_MINUS, plain, '-', typed},
        {'A', KEY_A, shift, 'A', typed},
        {0xE4, KEY_QUOTE, plain, 0xE4, typed},
        {1, KEY_A, ctrl, 'a', typed},
        {31, KEY_7, ctrl, KEY_7 + 96, typed},
        {0, KEY_A, alt, 'a', typed},
        // without Num Lock the keypad moves
        {0, KEY_7_PAD, plain, 71, ending},
        {0, KEY_4_PAD, plain, 75, editing},
        {0, KEY_DEL_PAD, plain, 83, editing},
        // no key of ours
        {0, KEY_A, plain, 0, typed},
        {0x20AC, KEY_E, plain, 0, typed},
    };
    for (const Row& row : rows) {
        const KeyEvent event = translate_key(row.character, row.library_key, row.shifts);
        EXPECT_TRUE(event.code == row.code && event.kind == row.kind)
            << "character " << row.character << " key " << row.library_key << " shifts " << row.shifts << " gave "
            << event.code << " of kind " << static_cast<int>(event.kind);
    }
    for (int n = 0; n < 10; ++n) {
        EXPECT_EQ(translate_key(0, KEY_F1 + n, plain).code, 59 + n);
        EXPECT_EQ(translate_key(0, KEY_F1 + n, shift).code, 84 + n);
        EXPECT_EQ(translate_key(0, KEY_F1 + n, ctrl).code, 94 + n);
        EXPECT_EQ(translate_key(0, KEY_F1 + n, alt).code, 59 + n);
    }
    EXPECT_EQ(translate_key('a', KEY_A, shift | ctrl | alt).modifier, 101);
    EXPECT_EQ(translate_key('a', KEY_A, shift | ctrl).modifier, 303);
    EXPECT_EQ(translate_key('a', KEY_A, shift).modifier, 301);
}

TEST(TextEdit, FollowsTheKeys) {
    constexpr int left = -75, right = -77, far_left = -115, far_right = -116, ins = -82, del = -83, back = -8;
    struct Row {
        const char* rule;
        std::string text;
        int cursor, length, insert;
        std::initializer_list<int> keys; ///< negative: an editing key
        std::string expected;
        int expected_cursor;
        EditOutcome outcome;
    };
    using enum EditOutcome;
    const Row rows[] = {
        {"types over", "abc", 1, 5, 0, {'X'}, "aXc  ", 2, changed},
        {"last position typed over ends", "", 0, 4, 0, {'1', '2', '3', '-'}, "123-", 3, full},
        {"a field of one character", "", 0, 1, 0, {'z'}, "z", 0, full},
        {"inserts; the last but one falls out", "abcde", 1, 5, 1, {'X'}, "aXbce", 2, changed},
        {"inserts before the last", "abcde", 3, 5, 1, {'X'}, "abcXe", 4, changed},
        {"inserts at the last position", "abcde", 4, 5, 1, {'X'}, "abcdX", 4, changed},
        {"Insert changes the mode", "ab", 0, 4, 0, {ins, 'X', ins, 'Y'}, "XYb ", 2, changed},
        {"Delete pulls the rest", "abc", 0, 5, 0, {del}, "bc   ", 0, changed},
        {"Backspace takes the one before", "abc", 2, 5, 0, {back}, "ac   ", 1, changed},
        {"Backspace at the start", "abc", 0, 5, 0, {back}, "abc  ", 0, ignored},
        {"Left at the start", "abc", 0, 5, 0, {left}, "abc  ", 0, at_edge},
        {"Left and Right", "abc", 2, 5, 0, {left, left, right}, "abc  ", 1, changed},
        {"Right at the end", "abc", 4, 5, 0, {right}, "abc  ", 4, at_edge},
        {"Ctrl+Left", "abc", 2, 5, 0, {far_left}, "abc  ", 0, changed},
        {"Ctrl+Right counts the words without blanks", "  ab  ", 0, 6, 0, {far_right}, "  ab  ", 1, changed},
        {"Ctrl+Right in an empty field", "", 3, 6, 0, {far_right}, "      ", 0, changed},
        {"a text that is too long is cut", "abcdefgh", 7, 4, 0, {'X'}, "abcX", 3, full},
    };
    for (const Row& row : rows) {
        FieldEdit field{row.text, row.cursor};
        int insert = row.insert;
        EditOutcome outcome = ignored;
        for (int key : row.keys) {
            const bool far = key == far_left || key == far_right;
            const KeyEvent event = key < 0 ? KeyEvent{-key, far ? key::modifier_ctrl : 0, KeyKind::editing}
                                           : KeyEvent{key, 0, KeyKind::character};
            outcome = edit_field(field, event, row.length, false, true, insert);
        }
        EXPECT_EQ(field.text, row.expected) << row.rule;
        EXPECT_EQ(field.cursor, row.expected_cursor) << row.rule;
        EXPECT_EQ(static_cast<int>(outcome), static_cast<int>(row.outcome)) << row.rule;
    }
}

TEST(TextEdit, NumericAndReadOnlyFieldsRefuse) {
    int insert = 0;
    FieldEdit field{"", 0};
    for (int digit : {'1', '2'})
        edit_field(field, {digit, 0, KeyKind::character}, 5, true, true, insert);
    EXPECT_EQ(edit_field(field, {'a', 0, KeyKind::character}, 5, true, true, insert), EditOutcome::forbidden);
    EXPECT_EQ(field.text, "12   ");
    EXPECT_EQ(edit_field(field, {'-', 0, KeyKind::character}, 5, true, true, insert), EditOutcome::changed);
    for (const KeyEvent& event : {KeyEvent{'1', 0, KeyKind::character}, KeyEvent{key::insert, 0, KeyKind::editing}})
        EXPECT_EQ(edit_field(field, event, 5, true, false, insert), EditOutcome::ignored);
    EXPECT_EQ(field.text, "12-  ");
    EXPECT_EQ(insert, 0);
}

TEST(FocusMove, KeysStepAndWrap) {
    struct Row {
        int code, current;
        bool by_keyboard;
        int to, direction;
        bool place;
    };
    const Row rows[] = {
        {key::down, 2, true, 3, 1, true},      {key::down, 4, true, 0, 1, true},
        {key::right, 1, true, 2, 1, true},     {key::down, 2, false, 0, 1, true},
        {key::up, 2, true, 1, -1, true},       {key::left, 0, true, 4, -1, true},
        {key::up, 2, false, 0, -1, true},      {key::home, 3, false, 0, 1, true},
        {key::end, 1, true, 4, -1, true},      {key::end, 1, false, 0, -1, true},
        {key::page_up, 2, true, 2, -1, false}, {key::ctrl_page_down, 2, true, 2, 1, false},
        {key::f12, 2, true, 2, -1, false},
    };
    for (const Row& row : rows) {
        const FocusMove move = move_focus(row.code, row.current, -1, 5, row.by_keyboard);
        EXPECT_TRUE(move.current == row.to && move.direction == row.direction && move.place_pointer == row.place)
            << "key " << row.code << " from " << row.current << " went to " << move.current;
    }
}

TEST(Pointer, PressesAreReportedOnceAndTheWheelStepByStep) {
    using Place = PointerNews::Place;
    PointerMemory memory;
    const auto judge = [&](int buttons, int wheel, int over) {
        return judge_pointer(memory, {buttons, wheel, over}, 3);
    };
    EXPECT_EQ(judge(1, 0, 3).code, 1);
    EXPECT_EQ(judge(1, 0, 3).code, 0) << "held";
    EXPECT_EQ(judge(3, 0, 3).code, 0) << "a second button while the first is held";
    EXPECT_EQ(judge(0, 0, 3).code, 0);
    EXPECT_EQ(judge(3, 0, 3).code, 3);
    judge(0, 0, 3);
    EXPECT_EQ(judge(1, 0, 5).code, 1) << "a click on another slot counts for the current one";
    judge(0, 0, 3);
    EXPECT_EQ(judge(1, 0, 0).code, 0) << "the background is no slot";
    judge(0, 0, 3);
    EXPECT_EQ(judge(2, 0, -1).code, 2) << "a right click counts anywhere";
    judge(0, 0, 3);
    for (int notch = 0; notch < 3; ++notch)
        EXPECT_EQ(judge(0, 3, 3).code, key::up);
    EXPECT_EQ(judge(0, 3, 3).code, 0);
    EXPECT_EQ(judge(0, 2, 3).code, key::down);
    EXPECT_EQ(judge(0, 2, -1).place, Place::away);
    EXPECT_EQ(judge(0, 2, 0).place, Place::away);
    EXPECT_EQ(judge(0, 2, 3).place, Place::on_current);
    EXPECT_EQ(judge(0, 2, 4).place, Place::on_other);
}

class Grid : public testing::Test {
protected:
    Grid() {
        test::start_library();
        layout_width = 800;
        layout_height = 600;
        configure_fonts("VELDOR_VCC");
    }
};

Slot text_slot(int column, int row, std::string_view text) {
    Slot slot{};
    slot.font = 6; // cells of 8 x 14
    slot.column = column;
    slot.row = row;
    slot.toggle = 1;
    store_text(slot.text, text);
    return slot;
}

TEST_F(Grid, SlotsAreHitWhereTheyAreDrawn) {
    const auto expect = [](const Slot& slot, Rect hit, const char* rule) {
        const Rect got = slot_rect(slot);
        EXPECT_TRUE(got.x1 == hit.x1 && got.y1 == hit.y1 && got.x2 == hit.x2 && got.y2 == hit.y2)
            << rule << ": " << got.x1 << ' ' << got.y1 << ' ' << got.x2 << ' ' << got.y2;
    };
    Slot slot = text_slot(10, 2, "ABCDE");
    expect(slot, {80, 28, 120, 42}, "as wide as its text, one row high");
    slot.dest_x = 300;
    expect(slot, {80, 28, 120, 42}, "one coordinate alone does not place it");
    slot.dest_y = 50;
    expect(slot, {300, 50, 340, 64}, "placed in pixels");
    slot.input_mode = 1;
    slot.size = 12;
    expect(slot, {300, 50, 396, 64}, "an entry field is as wide as its size");
    Slot picture{};
    picture.graphic = 1;
    picture.src_x = 10;
    picture.src_y = 20;
    picture.box_width = 110;
    picture.box_height = 50;
    picture.dest_x = 5;
    expect(picture, {5, 0, 105, 30}, "a picture");
    picture.box_width = INT32_MAX;
    picture.src_x = INT32_MIN;
    EXPECT_GT(slot_rect(picture).x2, 800);
}

TEST_F(Grid, PointerGoesToTheMiddleAndStaysOnTheScreen) {
    const auto expect = [](const Slot& slot, int focus, int x, int y) {
        const Point place = pointer_place(slot, focus, focus);
        EXPECT_TRUE(place.x == x && place.y == y) << place.x << ' ' << place.y;
    };
    select_font(6);
    Slot slot = text_slot(10, 2, "ABCDE");
    expect(slot, 0, 96, 35);
    slot.box_width = 100;
    slot.box_height = 20;
    expect(slot, 0, 130, 38);
    slot.dest_x = 740;
    slot.dest_y = 560;
    slot.src_x = 10;
    expect(slot, 0, 780, 570);
    expect(slot, 6, 774, 570);
}

TEST_F(Grid, FocusGoesToThePointerThenToWhatCanBeSelected) {
    SlotSet set;
    for (int i = 0; i < 5; ++i)
        set.slots.push_back(text_slot(10, 2 + i, "ABCDE"));
    set.toggles = set.slots;
    set.slots[0].toggle = -1;
    set.slots[2].draw_flags[2] = 'x';
    set.slots[3].input_mode = 2;
    store_text(set.slots[3].text, "typed");
    const auto pick = [&](int x, int row, int index, int direction, bool single = false) {
        mouse_x = x;
        mouse_y = 14 * row + 5;
        return pick_focus(set, index, direction, single);
    };
    EXPECT_EQ(pick(500, 0, 4, 1), 4);
    EXPECT_EQ(pick(90, 6, 1, 1), 4) << "the pointer wins";
    EXPECT_EQ(pick(90, 6, 1, 1, true), 1) << "it only confirms the keyboard's slot";
    EXPECT_EQ(pick(90, 4, 1, 1), 3) << "a skipped slot under the pointer";
    EXPECT_EQ(text_of(set.toggles[3].text), "typed");
    EXPECT_EQ(current_font, 6);
    EXPECT_EQ(pick(90, 4, 1, -1), 1);
    EXPECT_EQ(pick(500, 0, 0, -1), 4) << "wraps";
    EXPECT_EQ(pick(500, 0, 5, 1), -1) << "outside the set";
    for (Slot& slot : set.slots)
        slot.toggle = -1;
    EXPECT_EQ(pick(90, 6, 1, 1), -1);
    EXPECT_EQ(slot_under_pointer(0, set.slots, false), -1);
}

// Header: pages, font, text colour, window colour, shadow, sound, column, row.
constexpr std::string_view help_text = "#comment\n+7\n-Second\n-Page\n#\n"
                                       "+12\nP3\nn7\nn99\nf5\nc3\nw1\ns8\nS0\nx10\ny4\n-xHello\n-\n- World\nend\n"
                                       "+20\np1\nf\n";

TEST(HelpFile, EntryIsReadWithItsHeader) {
    const auto entry = read_help_entry(help_text, 12, 67);
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->pages, (std::vector{12, 7, 99}));
    EXPECT_EQ((std::vector{entry->font, entry->text_colour, entry->window_colour, entry->shadow_colour, entry->sound,
                           entry->column, entry->row}),
              (std::vector{5, 3, 1, 8, 0, 10, 4}));
    EXPECT_EQ(entry->lines, (std::vector<std::string>{"Hello", "", "World"}));
    EXPECT_TRUE(entry->complete);
    EXPECT_FALSE(read_help_entry(help_text, 13, 67));
}

TEST(HelpFile, MissingHeaderLinesLeaveTheDefaults) {
    const auto entry = read_help_entry(help_text, 20, 67);
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->pages, std::vector{20});
    EXPECT_EQ(entry->font, 4);
    EXPECT_EQ(entry->text_colour, 14);
    EXPECT_EQ(entry->sound, 26);
    EXPECT_EQ(entry->row, 100);
    EXPECT_FALSE(entry->complete) << "it runs to the end of the file";
}

TEST(HelpFile, FurtherPagesAreTextOnly) {
    EXPECT_EQ(read_help_page(help_text, 7, 67), (std::vector<std::string>{"econd", "age"}));
    EXPECT_EQ(read_help_page(help_text, 12, 67), (std::vector<std::string>{"Hello", "", "World"}));
    EXPECT_FALSE(read_help_page(help_text, 99, 67));
    EXPECT_FALSE(read_help_page("+1\np\n+2\np\n-xOther\n#\n", 1, 67)) << "the next entry's text";
}

TEST(HelpFile, LimitsHold) {
    std::string text = "+1\np12\n";
    for (int page = 2; page <= 12; ++page)
        text += "n" + std::to_string(100 + page) + "\n";
    text += "f\nc\nw\ns\nS\nx\ny\n-x" + std::string(100, 'a') + "\n#\n";
    const auto entry = read_help_entry(text, 1, 67);
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->pages.size(), 9u);
    EXPECT_EQ(entry->pages.back(), 109);
    ASSERT_EQ(entry->lines.size(), 1u) << "all twelve page lines are passed over";
    EXPECT_EQ(entry->lines[0].size(), 65u) << "67 characters with the two that are dropped";
    EXPECT_TRUE(read_help_entry("+1\np2000000000\nn", 1, 67));
    EXPECT_EQ(read_help_page("+1\np\n-xText\n#\n", 1, 1), std::vector<std::string>{""}) << "a line of one character";
    std::string long_text = "+1\np1\nf\nc\nw\ns\nS\nx\ny\n";
    for (int line = 0; line < 1000; ++line)
        long_text += "-xa\n";
    EXPECT_LE(read_help_entry(long_text + "#\n", 1, 67)->lines.size(), 200u);
}

} // namespace
} // namespace vcc
