// The rules of interaction: keys, editing, focus, what the pointer means, help files.
#include "core/layout.h"
#include "interaction/focus.h"
#include "interaction/focus_move.h"
#include "interaction/help.h"
#include "interaction/keys.h"
#include "interaction/pointer_frame.h"
#include "interaction/text_edit.h"
#include "support/allegro_none.h"
#include "support/slots.h"
#include "text/fonts.h"

#include <gtest/gtest.h>

namespace vcc {
namespace {

constexpr int plain = 0, shift = KB_SHIFT_FLAG, ctrl = KB_CTRL_FLAG, alt = KB_ALT_FLAG;

TEST(Keys, HaveTheProgramsOwnCodes) {
    struct Key {
        int character, library_key, shifts, code;
    };
    // Keys of the keypad have no character while Num Lock is off.
    const std::vector<Key> editing{
        {8, KEY_BACKSPACE, plain, 8}, {8, KEY_BACKSPACE, shift, 8}, {0, KEY_INSERT, plain, 82},
        {0, KEY_INSERT, ctrl, 82},    {127, KEY_DEL, plain, 83},    {127, KEY_DEL, ctrl, 83},
        {0, KEY_LEFT, plain, 75},     {0, KEY_LEFT, ctrl, 115},     {0, KEY_RIGHT, shift, 77},
        {0, KEY_RIGHT, ctrl, 116},    {0, KEY_4_PAD, plain, 75},    {0, KEY_DEL_PAD, plain, 83}};
    const std::vector<Key> ending{
        {9, KEY_TAB, plain, 9},   {0, KEY_TAB, shift, 9},   {13, KEY_ENTER, plain, 13}, {13, KEY_ENTER_PAD, plain, 13},
        {27, KEY_ESC, plain, 27}, {0, KEY_F11, ctrl, 69},   {0, KEY_F12, shift, 70},    {0, KEY_F12, alt, 70},
        {0, KEY_HOME, plain, 71}, {0, KEY_HOME, ctrl, 117}, {0, KEY_HOME, alt, 71},     {0, KEY_END, plain, 79},
        {0, KEY_END, ctrl, 119},  {0, KEY_PGUP, plain, 73}, {0, KEY_PGUP, ctrl, 132},   {0, KEY_PGDN, plain, 81},
        {0, KEY_PGDN, ctrl, 118}, {0, KEY_UP, plain, 72},   {0, KEY_UP, ctrl, 141},     {0, KEY_DOWN, plain, 80},
        {0, KEY_DOWN, ctrl, 145}, {0, KEY_W, alt, 333},     {0, KEY_X, alt, 45},        {0, KEY_7_PAD, plain, 71}};
    // What shares its number with a key stays a character; 0 is no key of ours.
    const std::vector<Key> typed{
        {8, KEY_BACKSPACE, ctrl, 63}, {13, KEY_ENTER, ctrl, 67},     {27, KEY_ESC, ctrl, 59},
        {24, KEY_X, ctrl, 'x'},       {'/', KEY_SLASH, plain, '/'},  {'7', KEY_7_PAD, plain, '7'},
        {'-', KEY_MINUS, plain, '-'}, {'A', KEY_A, shift, 'A'},      {0xE4, KEY_QUOTE, plain, 0xE4},
        {1, KEY_A, ctrl, 'a'},        {31, KEY_7, ctrl, KEY_7 + 96}, {0, KEY_A, alt, 'a'},
        {0, KEY_A, plain, 0},         {0x20AC, KEY_E, plain, 0}};
    for (const auto& [kind, keys] :
         {std::pair(KeyKind::editing, editing), {KeyKind::ending, ending}, {KeyKind::character, typed}})
        for (const Key& key : keys) {
            const KeyEvent event = translate_key(key.character, key.library_key, key.shifts);
            EXPECT_TRUE(event.code == key.code && event.kind == kind)
                << "character " << key.character << " key " << key.library_key << " shifts " << key.shifts << " gave "
                << event.code << " of kind " << static_cast<int>(event.kind);
        }
    for (int n = 0; n < 10; ++n)
        for (const auto& [shifts, first] : {std::pair(plain, 59), {shift, 84}, {ctrl, 94}, {alt, 59}})
            EXPECT_EQ(translate_key(0, KEY_F1 + n, shifts).code, first + n);
    for (const auto& [shifts, modifier] : {std::pair(shift | ctrl | alt, 101), {shift | ctrl, 303}, {shift, 301}})
        EXPECT_EQ(translate_key('a', KEY_A, shifts).modifier, modifier);
}

TEST(TextEdit, FollowsTheKeys) {
    constexpr int left = -75, right = -77, far_left = -115, far_right = -116, ins = -82, del = -83, back = -8;
    using enum EditOutcome;
    const struct {
        const char* rule;
        std::string text;
        int cursor, length, insert;
        std::vector<int> keys; ///< negative: an editing key
        std::string expected;
        int expected_cursor;
        EditOutcome outcome;
    } rows[] = {
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
    for (const auto& row : rows) {
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
        EXPECT_EQ(outcome, row.outcome) << row.rule;
    }
}

TEST(TextEdit, NumericAndReadOnlyFieldsRefuse) {
    int insert = 0;
    FieldEdit field{"", 0};
    const auto press = [&](int code, KeyKind kind, bool editable) {
        return edit_field(field, {code, 0, kind}, 5, true, editable, insert);
    };
    EXPECT_EQ(press('1', KeyKind::character, true), EditOutcome::changed);
    EXPECT_EQ(press('a', KeyKind::character, true), EditOutcome::forbidden);
    EXPECT_EQ(press('-', KeyKind::character, true), EditOutcome::changed);
    EXPECT_EQ(press('2', KeyKind::character, false), EditOutcome::ignored);
    EXPECT_EQ(press(key::insert, KeyKind::editing, false), EditOutcome::ignored);
    EXPECT_EQ(field.text, "1-   ");
    EXPECT_EQ(insert, 0);
}

TEST(FocusMove, KeysStepAndWrap) {
    const struct {
        int code, current;
        bool by_keyboard;
        int to, direction;
        bool place;
    } rows[] = {{key::down, 2, true, 3, 1, true},      {key::down, 4, true, 0, 1, true},
                {key::right, 1, true, 2, 1, true},     {key::down, 2, false, 0, 1, true},
                {key::up, 2, true, 1, -1, true},       {key::left, 0, true, 4, -1, true},
                {key::up, 2, false, 0, -1, true},      {key::home, 3, false, 0, 1, true},
                {key::end, 1, true, 4, -1, true},      {key::end, 1, false, 0, -1, true},
                {key::page_up, 2, true, 2, -1, false}, {key::ctrl_page_down, 2, true, 2, 1, false},
                {key::f12, 2, true, 2, -1, false}};
    for (const auto& row : rows) {
        const FocusMove move = move_focus(row.code, row.current, -1, 5, row.by_keyboard);
        EXPECT_TRUE(move.current == row.to && move.direction == row.direction && move.place_pointer == row.place)
            << "key " << row.code << " from " << row.current << " went to " << move.current;
    }
}

TEST(Pointer, PressesAreReportedOnceAndTheWheelStepByStep) {
    using enum PointerNews::Place;
    constexpr int current = 3, none = 0;
    const struct {
        const char* rule;
        PointerReading reading; // buttons, wheel, slot under the pointer
        int code;
        PointerNews::Place place;
    } steps[] = {
        {"press", {1, 0, 3}, 1, on_current},
        {"held", {1, 0, 3}, none, on_current},
        {"a second button while the first is held", {3, 0, 3}, none, on_current},
        {"released", {0, 0, 3}, none, on_current},
        {"both at once", {3, 0, 3}, 3, ignored},
        {"released", {0, 0, -1}, none, away},
        {"a click on another slot counts for the current one", {1, 0, 5}, 1, on_other},
        {"released", {0, 0, 0}, none, away},
        {"the background is no slot", {1, 0, 0}, none, away},
        {"released", {0, 0, 3}, none, on_current},
        {"a right click counts anywhere", {2, 0, -1}, 2, ignored},
        {"the wheel by two", {0, 2, 3}, key::up, ignored},
        {"its second notch", {0, 2, 3}, key::up, ignored},
        {"no third", {0, 2, 3}, none, on_current},
        {"back", {0, 1, 3}, key::down, ignored},
    };
    PointerMemory memory;
    for (const auto& step : steps) {
        const PointerNews news = judge_pointer(memory, step.reading, current);
        EXPECT_EQ(news.code, step.code) << step.rule;
        EXPECT_EQ(news.place, step.place) << step.rule;
    }
}

class Grid : public testing::Test {
protected:
    Grid() {
        test::start_library();
        layout_width = 800;
        layout_height = 600;
        configure_fonts("VELDOR_VCC");
        slot_ = test::make_slot("ABCDE", {{&Slot::font, 6}, {&Slot::column, 10}, {&Slot::row, 2}, {&Slot::toggle, 1}});
    }
    Slot slot_{}; ///< in cells of 8 x 14
};

TEST_F(Grid, SlotsAreHitWhereTheyAreDrawn) {
    const auto expect = [](const Slot& slot, std::array<int, 4> hit, const char* rule) {
        const Rect got = slot_rect(slot);
        EXPECT_EQ((std::array{got.x1, got.y1, got.x2, got.y2}), hit) << rule;
    };
    expect(slot_, {80, 28, 120, 42}, "as wide as its text, one row high");
    slot_.dest_x = 300;
    expect(slot_, {80, 28, 120, 42}, "one coordinate alone does not place it");
    slot_.dest_y = 50;
    expect(slot_, {300, 50, 340, 64}, "placed in pixels");
    test::set_fields(slot_, {{&Slot::input_mode, 1}, {&Slot::size, 12}});
    expect(slot_, {300, 50, 396, 64}, "an entry field is as wide as its size");
    Slot picture = test::make_slot("", {{&Slot::graphic, 1}, {&Slot::src_x, 10}, {&Slot::src_y, 20}});
    test::set_fields(picture, {{&Slot::box_width, 110}, {&Slot::box_height, 50}, {&Slot::dest_x, 5}});
    expect(picture, {5, 0, 105, 30}, "a picture");
    test::set_fields(picture, {{&Slot::box_width, INT32_MAX}, {&Slot::src_x, INT32_MIN}});
    EXPECT_GT(slot_rect(picture).x2, 800);
}

TEST_F(Grid, PointerGoesToTheMiddleAndStaysOnTheScreen) {
    const auto expect = [this](int focus, int x, int y) {
        const Point place = pointer_place(slot_, focus, focus);
        EXPECT_EQ(std::pair(place.x, place.y), std::pair(x, y));
    };
    select_font(6);
    expect(0, 96, 35);
    test::set_fields(slot_, {{&Slot::box_width, 100}, {&Slot::box_height, 20}});
    expect(0, 130, 38);
    test::set_fields(slot_, {{&Slot::dest_x, 740}, {&Slot::dest_y, 560}, {&Slot::src_x, 10}});
    expect(0, 780, 570);
    expect(6, 774, 570);
}

TEST_F(Grid, FocusGoesToThePointerThenToWhatCanBeSelected) {
    SlotSet set{std::vector(5, slot_), {}};
    for (int i = 0; i < 5; ++i)
        set.slots[static_cast<std::size_t>(i)].row = 2 + i;
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
}

using Lines = std::vector<std::string>;

TEST(HelpFile, EntriesAreReadWithTheirHeaderOrItsDefaults) {
    // Header: pages, font, text colour, window colour, shadow, sound, column, row.
    constexpr std::string_view text = "#comment\n+7\n-Second\n-Page\n#\n"
                                      "+12\nP3\nn7\nn99\nf5\nc3\nw1\ns8\nS0\nx10\ny4\n-xHello\n-\n- World\nend\n"
                                      "+20\np1\nf\n";
    const struct {
        int number;
        std::vector<int> pages, header;
        Lines lines;
        bool complete; ///< it does not run to the end of the file
    } cases[] = {{12, {12, 7, 99}, {5, 3, 1, 8, 0, 10, 4}, {"Hello", "", "World"}, true},
                 {20, {20}, {4, 14, 0, 0, 26, 100, 100}, {}, false}};
    for (const auto& c : cases) {
        const auto entry = read_help_entry(text, c.number, 67);
        ASSERT_TRUE(entry);
        EXPECT_EQ(entry->pages, c.pages);
        EXPECT_EQ((std::vector{entry->font, entry->text_colour, entry->window_colour, entry->shadow_colour,
                               entry->sound, entry->column, entry->row}),
                  c.header);
        EXPECT_EQ(entry->lines, c.lines);
        EXPECT_EQ(entry->complete, c.complete);
    }
    EXPECT_FALSE(read_help_entry(text, 13, 67));
    EXPECT_EQ(read_help_page(text, 7, 67), (Lines{"econd", "age"}));
    EXPECT_EQ(read_help_page(text, 12, 67), (Lines{"Hello", "", "World"}));
    EXPECT_FALSE(read_help_page(text, 99, 67));
    EXPECT_FALSE(read_help_page("+1\np\n+2\np\n-xOther\n#\n", 1, 67)) << "the next entry's text";
}

TEST(HelpFile, LimitsHold) {
    std::string text = "+1\np12\n";
    for (int page = 2; page <= 12; ++page)
        text += "n" + std::to_string(100 + page) + "\n";
    text += "f\nc\nw\ns\nS\nx\ny\n";
    const auto entry = read_help_entry(text + "-x" + std::string(100, 'a') + "\n#\n", 1, 67);
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->pages.size(), 9u);
    EXPECT_EQ(entry->pages.back(), 109);
    ASSERT_EQ(entry->lines.size(), 1u) << "all twelve page lines are passed over";
    EXPECT_EQ(entry->lines[0].size(), 65u) << "67 characters with the two that are dropped";
    EXPECT_TRUE(read_help_entry("+1\np2000000000\nn", 1, 67));
    EXPECT_EQ(read_help_page("+1\np\n-xText\n#\n", 1, 1), Lines{""}) << "a line of one character";
    for (int line = 0; line < 1000; ++line)
        text += "-xa\n";
    EXPECT_LE(read_help_entry(text, 1, 67)->lines.size(), 200u);
}

} // namespace
} // namespace vcc
