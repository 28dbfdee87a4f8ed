// The rules of interaction: keys, editing, focus, help files.
#include "core/gamepad.h"
#include "interaction/field_entry.h"
#include "interaction/focus.h"
#include "interaction/help_file.h"
#include "interaction/keys.h"
#include "support/screen_world.h"
#include "text/fonts.h"

#include <gtest/gtest.h>

namespace vcc {
namespace {

TEST(Keys, HaveTheProgramsOwnCodes) {
    constexpr int plain = 0, shift = KB_SHIFT_FLAG, ctrl = KB_CTRL_FLAG;
    using enum KeyKind;
    const struct {
        const char* rule;
        int character, library_key, shifts, code;
        KeyKind kind;
    } rows[] = {
        {"what lies beyond Latin-1 is not typed", 0x20AC, KEY_E, plain, 0, character},
        {"Ctrl+X is not Alt+X", 24, KEY_X, ctrl, 'x', character},
        {"a control code counts as its key", 8, KEY_BACKSPACE, ctrl, KEY_BACKSPACE, character},
        {"Ctrl goes before Shift", 0, KEY_LEFT, ctrl | shift, 115, editing},
        {"Shift+Tab comes without a character", 0, KEY_TAB, shift, 9, ending},
        {"Shift changes a function key", 0, KEY_F1, shift, 84, ending},
        {"the keypad with Num Lock", '7', KEY_7_PAD, plain, '7', character},
        {"the keypad without it", 0, KEY_7_PAD, plain, 71, ending},
        {"a gamepad's own", 0, key_clear_field, plain, key::clear_field, editing},
    };
    for (const auto& row : rows) {
        const KeyEvent event = translate_key(row.character, row.library_key, row.shifts);
        EXPECT_EQ(event.code, row.code) << row.rule;
        EXPECT_EQ(event.kind, row.kind) << row.rule;
    }
}

/// What some keys make of a field of five characters; "|" stands before its cursor.
std::string edited(const std::string& text, std::size_t cursor, const std::vector<KeyEvent>& keys) {
    FieldEdit field{text, cursor};
    int insert = 0;
    for (const KeyEvent& key : keys)
        edit_field(field, key, 5, false, true, insert);
    return field.text.insert(field.cursor, "|");
}

TEST(TextEdit, FollowsTheKeys) {
    using enum KeyKind;
    constexpr KeyEvent x{'X'}, y{'Y'}, ins{key::insert, 0, editing}, del{key::del, 0, editing},
        back{key::backspace, 0, editing}, left{key::left, 0, editing}, right{key::right, 0, editing},
        far_left{key::ctrl_left, 0, editing}, far_right{key::ctrl_right, 0, editing}, f1{key::f1, 0, ending};
    EXPECT_EQ(edited("abcde", 1, {ins, x}), "aX|bce") << "the last but one falls out";
    EXPECT_EQ(edited("abcde", 3, {ins, x}), "abcX|e");
    EXPECT_EQ(edited("abcde", 4, {ins, x}), "abcd|X") << "inserts at the last position";
    EXPECT_EQ(edited("ab", 0, {ins, x, ins, y}), "XY|b  ") << "Insert again types over";
    EXPECT_EQ(edited("abc", 0, {del}), "|bc   ");
    EXPECT_EQ(edited("abc", 1, {back, back}), "|bc   ");
    EXPECT_EQ(edited("abc", 1, {left, left}), "|abc  ");
    EXPECT_EQ(edited("abc", 3, {right, right}), "abc | ") << "stays on the last position";
    EXPECT_EQ(edited("abc", 2, {far_left}), "|abc  ");
    EXPECT_EQ(edited("  ab ", 0, {far_right}), " | ab ") << "counts the words without blanks";
    EXPECT_EQ(edited("", 3, {far_right}), "|     ");
    EXPECT_EQ(edited("abcdefgh", 4, {{key::clear_field, 0, editing}}), "|     ");
    EXPECT_EQ(edited("abcdefgh", 4, {x}), "abcd|X") << "a text that is too long is cut";
    EXPECT_EQ(edited("abcdefgh", 0, {f1, right}), "a|bcdefgh") << "but not by looking at it";
}

TEST(TextEdit, FieldsRefuseKeysAndAreFinishedWhenFull) {
    FieldEdit field{"", 3};
    int insert = 0;
    EXPECT_EQ(edit_field(field, {'a'}, 5, true, true, insert), EditOutcome::forbidden) << "not in a number";
    EXPECT_EQ(edit_field(field, {'2'}, 5, false, false, insert), EditOutcome::ignored) << "read only";
    EXPECT_EQ(edit_field(field, {'-'}, 5, true, true, insert), EditOutcome::changed);
    EXPECT_EQ(edit_field(field, {'1'}, 5, true, true, insert), EditOutcome::full);
    EXPECT_EQ(field.text, "   -1");
}

class Grid : public testing::Test {
protected:
    Grid() {
        test::start_library();
        configure_fonts();
        slot_ = test::make_slot("ABCDE", {{&Slot::font, 6}, {&Slot::column, 10}, {&Slot::row, 2}, {&Slot::toggle, 1}});
    }
    Slot slot_{}; ///< in cells of 8 x 14
};

TEST_F(Grid, SlotsAreHitWhereTheyAreDrawn) {
    slot_.dest_x = 300;
    EXPECT_EQ(slot_rect(slot_).x1, 80) << "one coordinate alone does not place it";
    test::set_fields(slot_, {{&Slot::dest_y, 50}, {&Slot::input_mode, 1}, {&Slot::size, 12}});
    EXPECT_EQ(slot_rect(slot_).x2, 396) << "an entry field is as wide as its size";
    test::set_fields(slot_, {{&Slot::graphic, 1}, {&Slot::src_y, 20}, {&Slot::box_height, 50}, {&Slot::box_width, 60}});
    EXPECT_EQ(slot_rect(slot_).x2, 360) << "a picture";
    EXPECT_EQ(slot_rect(slot_).y2, 80) << "a picture";
    test::set_fields(slot_, {{&Slot::box_width, INT32_MAX}, {&Slot::src_x, INT32_MIN}});
    EXPECT_GT(slot_rect(slot_).x2, 800) << "a damaged file's";
}

TEST_F(Grid, PointerGoesToTheMiddleAndStaysOnTheScreen) {
    select_font(6);
    EXPECT_EQ(pointer_place(slot_, 0, 0).x, 96);
    EXPECT_EQ(pointer_place(slot_, 0, 0).y, 35);
    test::set_fields(slot_, {{&Slot::dest_x, 740}, {&Slot::dest_y, 560}, {&Slot::box_width, 100}});
    EXPECT_EQ(pointer_place(slot_, 6, 6).x, 774);
}

TEST_F(Grid, FocusGoesToThePointerThenToWhatCanBeSelected) {
    SlotSet set{std::vector(5, slot_), {}};
    for (int i = 0; i < 5; ++i)
        set.slots[static_cast<std::size_t>(i)].row = i;
    set.slots[0].toggle = -1;
    set.slots[2].draw_flags[2] = 'x';
    const auto pick = [&](int row, int index, int direction, bool single = false) {
        mouse_x = 90;
        mouse_y = 14 * row + 5;
        return pick_focus(set, index, direction, single);
    };
    EXPECT_EQ(pick(4, 1, 1), 4) << "the pointer wins";
    EXPECT_EQ(pick(4, 1, 1, true), 1) << "it only confirms the keyboard's slot";
    EXPECT_EQ(pick(2, 1, 1), 3) << "a skipped slot under the pointer";
    EXPECT_EQ(pick(2, 1, -1), 1);
    EXPECT_EQ(pick(9, 0, -1), 4) << "wraps";
    EXPECT_EQ(pick(9, 5, 1), -1) << "outside the set";
    set.slots.clear();
    EXPECT_EQ(pick(9, 3, 1), -1) << "nothing to search";
}

using FieldDrawing = test::ScreenWorld;

TEST_F(FieldDrawing, TheCursorHasNoShadowBesideIt) {
    select_font(6);
    SlotSet set{{test::make_slot("abc", {{&Slot::box_width, 40}, {&Slot::fore_colour, 14}, {&Slot::back_colour, 1}})},
                {}};
    Slot& field = set.slots[0];
    field.draw_flags[1] = 's';
    field.sound_flags[1] = 12;
    ScreenRun run{.target = picture.get(), .set = &set, .fields = {{.x = 100, .y = 100, .size = 5}}};
    FieldEntry(run, field, false);
    EXPECT_GT(count(pixel_of(1)), 0);
    EXPECT_EQ(count(pixel_of(12)), 0);
    wipe();
    field.box_width = 0;
    FieldEntry(run, field, false);
    EXPECT_EQ(ink(), 0) << "a field that takes no keys shows its whole text";
}

TEST(HelpFile, EntriesAreReadWithTheirHeaderOrItsDefaults) {
    // Header: pages, font, text colour, window colour, shadow, sound, column, row.
    constexpr std::string_view text = "#comment\n+7\n-Second\n#\n"
                                      "+12\nP3\nn7\nn99\nf5\nc3\nw1\ns8\nS0\nx10\ny4\n-xHello\n-\n- World\nend\n"
                                      "+20\np1\nf\n";
    const auto entry = read_help_entry(text, 12), cut_off = read_help_entry(text, 20);
    ASSERT_TRUE(entry && cut_off);
    EXPECT_EQ(entry->pages, (std::vector{12, 7, 99}));
    EXPECT_EQ((std::vector{entry->font, entry->text_colour, entry->window_colour, entry->shadow_colour, entry->sound,
                           entry->column, entry->row}),
              (std::vector{5, 3, 1, 8, 0, 10, 4}));
    EXPECT_EQ(entry->lines, (std::vector<std::string>{"Hello", "", "World"}));
    EXPECT_EQ(cut_off->font, 4);
    EXPECT_FALSE(cut_off->complete);
    EXPECT_EQ(read_help_page(text, 12), entry->lines);
    EXPECT_FALSE(read_help_page("+1\np\nf\nc\nw\ns\nS\nx\ny\n+2\np\n-xOther\n#\n", 1)) << "the next entry's text";
    EXPECT_EQ(read_help_page("+1\n+1\n+5\n+3\n+1\n+8\n+0\n+10\n+4\n-xHello\n#\n", 1),
              std::vector<std::string>{"Hello"});
}

TEST(HelpFile, LimitsHold) {
    std::string text = "+1\np12\nn2\nn3\nn4\nn5\nn6\nn7\nn8\nn9\nn10\nn11\nn12\nf\nc\nw\ns\nS\nx\ny\n";
    text += "-x" + std::string(100, 'a') + "\n";
    for (int line = 0; line < 1000; ++line)
        text += "-xa\n";
    const auto entry = read_help_entry(text, 1);
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->pages.size(), 9u);
    ASSERT_EQ(entry->lines.size(), 200u);
    EXPECT_EQ(entry->lines.front().size(), 65u) << "67 characters with the two that are dropped";
}

} // namespace
} // namespace vcc
