// Operations on sources: the exact text that each leaves, and on the built-in screens that nothing else changes.
#include "vcckit/edit/describe.h"
#include "vcckit/edit/history.h"
#include "vcckit/edit/source_edit.h"
#include "vcckit/record/fields.h"
#include "vcckit/source/screen_source.h"
#include "vcckit/source/unpack.h"

#include "core/files.h"
#include "core/text.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>

namespace vcc::kit::edit {
namespace {

using Do = Operation::Do;
using Of = Address::Of;

Address slot(int index, const std::string& look = {}) {
    return {Of::slot, index, "", look};
}

Operation set(const Address& of, const std::string& field, Value value, const std::string& language = {}) {
    Operation operation;
    operation.of = {of};
    operation.field = field;
    operation.language = language;
    operation.value = std::move(value);
    return operation;
}

Operation unset(const Address& of, const std::string& field, const std::string& language = {}) {
    Operation operation = set(of, field, true, language);
    operation.what = Do::unset;
    return operation;
}

struct Case {
    const char* what;
    std::string before;
    std::vector<Operation> operations;
    std::string after; ///< or, behind a "!", the beginning of the reason
};

void expect_cases(const std::vector<Case>& cases, const std::string& screen = {}) {
    for (const Case& each : cases) {
        const auto result = apply(each.before, DocumentKind::screen, each.operations, {screen});
        const std::string got = result ? *result : "!" + result.reason();
        EXPECT_EQ(each.after.starts_with('!') ? got.substr(0, each.after.size()) : got, each.after) << each.what;
    }
}

const std::string one = "[[slot]]\nindex = 1\n";
const std::string group = "[[slot]]\nindex = 5\nrepeat = { count = 3, step = 2, dest_y = 26 }\n";
const std::string styled = "[style.a]\nrow = 4\ntext = { en = \"A\", de = \"B\" }\nhighlight = { row = 5 }\n"
                           "[[slot]]\nindex = 1\nstyle = \"a\"\n";

TEST(SourceEdit, SetWritesWhereTheValueStands) {
    using namespace std::string_literals;
    expect_cases({
        {"number, comment", one + "row =  3 # three\n", {set(slot(1), "row", 40)}, one + "row =  40 # three\n"},
        {"same number in another spelling", one + "row = 0x10\n", {set(slot(1), "row", 16)}, one + "row = 0x10\n"},
        {"new field", one + "# end\n", {set(slot(1), "row", 4)}, one + "row = 4\n# end\n"},
        {"no final line end", "[[slot]]\nindex = 1", {set(slot(1), "row", 4)}, "[[slot]]\nindex = 1\nrow = 4"},
        {"CRLF, tabs",
         "[[slot]]\r\n\tindex = 1\r\n",
         {set(slot(1), "row", 4)},
         "[[slot]]\r\n\tindex = 1\r\n\trow = 4\r\n"},
        {"name", one + "font = 3\n", {set(slot(1), "font", "mono_16"s)}, one + "font = \"mono_16\"\n"},
        {"a number's name", one, {set(slot(1), "fore_colour", 14)}, one + "fore_colour = \"yellow\"\n"},
        {"own name",
         "names.sound.hit = 7\n" + one,
         {set(slot(1), "sound", 7)},
         "names.sound.hit = 7\n" + one + "sound = \"hit\"\n"},
        {"same number by name",
         one + "fore_colour = \"yellow\"\n",
         {set(slot(1), "fore_colour", 14)},
         one + "fore_colour = \"yellow\"\n"},
        {"unknown name", one, {set(slot(1), "font", "mono_17"s)}, "!there is no font \"mono_17\""},
        {"text",
         one + "text = 'a'\n",
         {set(slot(1), "text", "\"\\\n\xc3\xa4"s)},
         one + "text = \"\\\"\\\\\\u000A\xc3\xa4\"\n"},
        {"text beyond ASCII behind no blank",
         one + "text='a'\n",
         {set(slot(1), "text", "\xc3\xa4"s)},
         one + "text= \"\xc3\xa4\"\n"},
        {"flag", one + "hidden = true\n", {set(slot(1), "hidden", false)}, one + "hidden = false\n"},
        {"shadow colour", one, {set(slot(1), "shadow", "red"s)}, one + "shadow = \"red\"\n"},
        {"styles",
         styled + "[style.b]\n",
         {set(slot(1), "style", "a, b"s)},
         "[style.a]\nrow = 4\ntext = { en = \"A\", de = \"B\" }\nhighlight = { row = 5 }\n"
         "[[slot]]\nindex = 1\nstyle = [\"a\", \"b\"]\n[style.b]\n"},
        {"unknown style", one, {set(slot(1), "style", "a"s)}, "!there is no [style.a]"},
        {"unknown field", one, {set(slot(1), "colour", 1)}, "!there is no field \"colour\""},
        {"wrong kind", one, {set(slot(1), "row", true)}, "!row must be a number or a name"},
        {"too large", one, {set(slot(1), "row", std::int64_t{1} << 31)}, "!2147483648 does not fit"},
        {"no such slot", one, {set(slot(2), "row", 1)}, "!no [[slot]] describes number 2"},
        {"index", one, {set(slot(1), "index", 2)}, "!a record gets another number by renumbering it"},
        {"not TOML", "[[slot]\n", {set(slot(1), "row", 1)}, "!line 1: "},
        {"the record's own, not the style's", styled, {set(slot(1), "row", 7)}, styled + "row = 7\n"},
        {"style",
         styled,
         {set({Of::style, 0, "a", ""}, "row", 7)},
         "[style.a]\nrow = 7\n" + styled.substr(styled.find("text"))},
        {"dotted style",
         "style.a.row = 1\n" + one,
         {set({Of::style, 0, "a", ""}, "column", 7)},
         "style.a.row = 1\nstyle.a.column = 7\n" + one},
        {"style without a heading",
         "[style.a.highlight]\nrow = 1\n",
         {set({Of::style, 0, "a", ""}, "row", 7)},
         "!the table has no heading of its own"},
        {"records in a list",
         "slot = [{ index = 1, row = 2 }, {index=3}]\n",
         {set(slot(1), "row", 9), set(slot(3), "row", 8)},
         "slot = [{ index = 1, row = 9 }, {index=3, row = 8}]\n"},
    });
}

TEST(SourceEdit, SetInOneLanguageKeepsTheOther) {
    using namespace std::string_literals;
    expect_cases({
        {"plain", one + "row = 3\n", {set(slot(1), "row", 4, "de")}, one + "row = { en = 3, de = 4 }\n"},
        {"same", one + "row = 3\n", {set(slot(1), "row", 3, "de")}, one + "row = 3\n"},
        {"inline",
         one + "row = { en = 1, de = 2 }\n",
         {set(slot(1), "row", 1, "de")},
         one + "row = { en = 1, de = 1 }\n"},
        {"both of an inline table",
         one + "row = { en = 1, de = 2 }\n",
         {set(slot(1), "row", 7)},
         one + "row = { en = 7, de = 7 }\n"},
        {"dotted",
         one + "text.en = \"a\" # A\ntext.de = \"b\"\n",
         {set(slot(1), "text", "c"s, "en")},
         one + "text.en = \"c\" # A\ntext.de = \"b\"\n"},
        {"headed",
         one + "[slot.text]\nen = \"a\"\nde = \"b\"\n",
         {set(slot(1), "text", "c"s, "de")},
         one + "[slot.text]\nen = \"a\"\nde = \"c\"\n"},
        {"one is missing",
         one + "text.en = \"a\"\nrow = 1\n",
         {set(slot(1), "text", "c"s, "de")},
         one + "text.en = \"a\"\ntext.de = \"c\"\nrow = 1\n"},
        {"nothing yet", one, {set(slot(1), "row", 4, "de")}, one + "row = { en = 0, de = 4 }\n"},
        {"from the style", styled, {set(slot(1), "text", "C"s, "de")}, styled + "text = { en = \"A\", de = \"C\" }\n"},
        {"flag", one, {set(slot(1), "hidden", true, "de")}, "!hidden is the same in every language"},
        {"unknown", one, {set(slot(1), "row", 1, "fr")}, "!\"fr\" is no language"},
    });
}

TEST(SourceEdit, SetInAGroupMovesItsNumbersAndSplitsItsTexts) {
    using namespace std::string_literals;
    expect_cases({
        {"number with step", group + "dest_y = 100\n", {set(slot(7), "dest_y", 130)}, group + "dest_y = 104\n"},
        {"number without step", group + "dest_x = 9\n", {set(slot(9), "dest_x", 8)}, group + "dest_x = 8\n"},
        {"name with step",
         "[[slot]]\nindex = 5\nrepeat = { count = 3, action = 1 }\naction = \"hq\"\n",
         {set(slot(6), "action", "battle"s)},
         "[[slot]]\nindex = 5\nrepeat = { count = 3, action = 1 }\naction = 3\n"},
        {"text in a list",
         group + "text = [\n  \"a\", # 1\n  { en = \"b\", de = \"c\" },\n  \"d\",\n]\n",
         {set(slot(7), "text", "x"s, "de"), set(slot(9), "text", "y"s, "de"), set(slot(5), "text", "z"s)},
         group + "text = [\n  \"z\", # 1\n  { en = \"b\", de = \"x\" },\n  { en = \"d\", de = \"y\" },\n]\n"},
        {"common text",
         group + "text = \"a\"\n",
         {set(slot(7), "text", "x"s)},
         group + "text = [\"a\", \"x\", \"a\"]\n"},
        {"text of nobody",
         group,
         {set(slot(9), "text", "x"s, "en")},
         group + "text = [\"\", \"\", { en = \"x\", de = \"\" }]\n"},
        {"list of another length", group + "row = [1, 2]\n", {set(slot(7), "row", 1)}, "!a list has 2 values for 3"},
        {"repeat",
         group,
         {set(slot(5), "repeat.count", 4), set(slot(5), "repeat.row", 2)},
         "[[slot]]\nindex = 5\nrepeat = { count = 4, step = 2, dest_y = 26, row = 2 }\n"},
    });
}

TEST(SourceEdit, LooksTakeFieldsOfTheirOwn) {
    expect_cases({
        {"first", one, {set(slot(1, "highlight"), "row", 4)}, one + "highlight = { row = 4 }\n"},
        {"further",
         one + "pressed = { row = 4 }\n",
         {set(slot(1, "pressed"), "index", 20)},
         one + "pressed = { row = 4, index = 20 }\n"},
        {"empty", one + "pressed = {}\n", {set(slot(1, "pressed"), "row", 2)}, one + "pressed = { row = 2 }\n"},
        {"headed",
         one + "[slot.highlight]\nrow = 4\n\n[[slot]]\nindex = 2\n",
         {set(slot(1, "highlight"), "column", 3)},
         one + "[slot.highlight]\nrow = 4\ncolumn = 3\n\n[[slot]]\nindex = 2\n"},
        {"dropped before",
         one + "highlight = false\n",
         {set(slot(1, "highlight"), "row", 4)},
         one + "highlight = { row = 4 }\n"},
        {"beside the style's",
         styled,
         {set(slot(1, "highlight"), "row", 6, "de")},
         styled + "highlight = { row = { en = 5, de = 6 } }\n"},
        {"from the slot",
         one + "row = 3\n",
         {set(slot(1, "highlight"), "row", 6, "de")},
         one + "row = 3\nhighlight = { row = { en = 3, de = 6 } }\n"},
        {"a look without changes", one, {set(slot(1), "pressed", true)}, one + "pressed = {}\n"},
        {"no look", one + "pressed = { row = 1 }\n", {set(slot(1), "pressed", false)}, one + "pressed = false\n"},
        {"record of the look", one, {set({Of::toggle, 1, "", ""}, "row", 1)}, "!toggle record 1 is a look of slot 1"},
    });
}

TEST(SourceEdit, UnsetTakesTheLineOrThePartAway) {
    expect_cases({
        {"line with comment", one + "row = 3 # x\ncolumn = 1\n", {unset(slot(1), "row")}, one + "column = 1\n"},
        {"last line without end", one + "row = 3", {unset(slot(1), "row")}, "[[slot]]\nindex = 1"},
        {"several lines", one + "text = [\n 'a'\n]\nrow = 1\n", {unset(slot(1), "text")}, one + "row = 1\n"},
        {"dotted", one + "text.en = 'a'\nrow = 1\ntext.de = 'b'\n", {unset(slot(1), "text")}, one + "row = 1\n"},
        {"headed", one + "[slot.highlight]\nrow = 4\n", {unset(slot(1), "highlight")}, one},
        {"first part",
         one + "pressed = { row = 1, column = 2 }\n",
         {unset(slot(1, "pressed"), "row")},
         one + "pressed = { column = 2 }\n"},
        {"last part",
         one + "pressed = { row = 1, column = 2 }\n",
         {unset(slot(1, "pressed"), "column")},
         one + "pressed = { row = 1 }\n"},
        {"a language of a table",
         one + "row = { en = 1, de = 2 } # x\n",
         {unset(slot(1), "row", "de")},
         one + "row = 1 # x\n"},
        {"a language of dotted keys",
         one + "row.en = 1\nrow.de = 2\n",
         {unset(slot(1), "row", "en")},
         one + "row = 2\n"},
        {"bytes are of no language",
         one + "text = { raw = '00' }\n",
         {unset(slot(1), "text", "en")},
         "!text has no value"},
        {"the style's", styled, {unset(slot(1), "row")}, "!row is not written there"},
    });
}

Operation moved(std::vector<Address> of, int dx, int dy, Do what = Do::move) {
    Operation operation;
    operation.what = what;
    operation.of = std::move(of);
    operation.dx = dx;
    operation.dy = dy;
    return operation;
}

TEST(SourceEdit, MoveAndResizeAddInEveryLanguage) {
    const std::string picture = one + "graphic = 1\n";
    expect_cases({
        {"pixels",
         picture + "dest_x = 4\ndest_y.en = 7\ndest_y.de = 9\n",
         {moved({slot(1)}, 2, -9)},
         picture + "dest_x = 6\ndest_y.en = -2\ndest_y.de = 0\n"},
        {"cells",
         one + "column = 4\nrow = 5\ndest_x = 9\n",
         {moved({slot(1)}, 1, 1)},
         one + "column = 5\nrow = 6\ndest_x = 9\n"},
        {"nothing written", picture, {moved({slot(1)}, 3, 0)}, picture + "dest_x = 3\n"},
        {"the style's place", styled, {moved({slot(1)}, 0, 2)}, styled + "row = 6\n"},
        {"cells here, pixels there",
         one + "dest_x = { en = 5, de = 0 }\ndest_y = 5\n",
         {moved({slot(1)}, 1, 0)},
         one + "dest_x = { en = 6, de = 0 }\ndest_y = 5\ncolumn = { en = 0, de = 1 }\n"},
        {"to the edge, where cells begin",
         one + "dest_x = 1\ndest_y = 5\n",
         {moved({slot(1)}, -1, 0)},
         "!dest_x would be 0"},
        {"a group moves once",
         group + "graphic = 1\ndest_y = 10\n",
         {moved({slot(5), slot(7), slot(9)}, 0, 3)},
         group + "graphic = 1\ndest_y = 13\n"},
        {"parts of a list",
         group + "graphic = 1\ndest_x = [1, 2, 3]\n",
         {moved({slot(5), slot(9)}, 10, 0)},
         group + "graphic = 1\ndest_x = [11, 2, 13]\n"},
        {"a look",
         picture + "dest_x = 5\n",
         {moved({slot(1, "pressed")}, 1, 1)},
         picture + "dest_x = 5\npressed = { dest_x = 6, dest_y = 1 }\n"},
        {"text window",
         one + "graphic = 3\ntext = \"TEXT-WIN\"\n",
         {moved({slot(1)}, 1, 1)},
         "!the slot shows text window 3"},
        {"box",
         one + "box_width = 9 # w\n",
         {moved({slot(1)}, 2, 3, Do::resize)},
         one + "box_width = 11 # w\nbox_height = 3\n"},
        {"picture of nothing",
         picture + "src_x = 5\nbox_width = 9\n",
         {moved({slot(1)}, -4, 0, Do::resize)},
         "!box_width would be 5, less than 6"},
    });
}

Operation whole(Do what, std::vector<Address> of, int to = 0, std::string text = {}) {
    Operation operation;
    operation.what = what;
    operation.of = std::move(of);
    operation.to = to;
    operation.text = std::move(text);
    return operation;
}

const std::string three = "# screen\n\n# first\n[[slot]]\nindex = 3 # A\n\n# second\n[[slot]]\nindex = 9\n\n[[slot]]\n"
                          "index = 5\n[slot.pressed]\nrow = 1\n";

TEST(SourceEdit, RecordsAreMadeCopiedAndTakenAway) {
    expect_cases({
        {"behind the next lower",
         three,
         {whole(Do::create, {}, 4, "row = 1\ncolumn = 2")},
         "# screen\n\n# first\n[[slot]]\nindex = 3 # A\n\n[[slot]]\nindex = 4\nrow = 1\ncolumn = 2\n\n" +
             three.substr(three.find("# second"))},
        {"at the end", three, {whole(Do::create, {}, 6)}, three + "\n[[slot]]\nindex = 6\n"},
        {"before the first",
         three,
         {whole(Do::create, {}, 1)},
         "# screen\n\n[[slot]]\nindex = 1\n\n" + three.substr(three.find("# first"))},
        {"in nothing", "", {whole(Do::create, {}, 1)}, one},
        {"CRLF without an end",
         "[[slot]]\r\nindex = 1",
         {whole(Do::create, {}, 2, "row = 1")},
         "[[slot]]\r\nindex = 1\r\n\r\n[[slot]]\r\nindex = 2\r\nrow = 1"},
        {"a toggle record", one, {whole(Do::create, {{Of::toggle, 0, "", ""}}, 2)}, one + "\n[[toggle]]\nindex = 2\n"},
        {"a style",
         "# x\n" + one,
         {whole(Do::create, {{Of::style, 0, "b", ""}}, 0, "row = 1")},
         "[style.b]\nrow = 1\n\n# x\n" + one},
        {"a number that is taken", three, {whole(Do::create, {}, 9)}, "!slot 9 is described in line 8"},
        {"a number that is none", three, {whole(Do::create, {}, 200)}, "!numbers are 0 to 199"},
        {"lines that are none", three, {whole(Do::create, {}, 4, "row 1")}, "!the change does not fit"},
        {"copy", three, {whole(Do::copy, {slot(5)}, 6)}, three + "\n[[slot]]\nindex = 6\n[slot.pressed]\nrow = 1\n"},
        {"copy with its own pressed look",
         one + "activated = 7\npressed = { index = 7, row = 1 }\n",
         {whole(Do::copy, {slot(1)}, 2)},
         one + "activated = 7\npressed = { index = 7, row = 1 }\n\n[[slot]]\nindex = 2\npressed = { row = 1 }\n"},
        {"copy out of a group",
         group + "dest_y = 4\ntext = ['a', 'b', { en = 'c', de = 'd' }]\n",
         {whole(Do::copy, {slot(9)}, 20)},
         group + "dest_y = 4\ntext = ['a', 'b', { en = 'c', de = 'd' }]\n\n"
                 "[[slot]]\nindex = 20\ndest_y = 56\ntext = { en = 'c', de = 'd' }\n"},
        {"remove with its comment",
         three,
         {whole(Do::remove, {slot(9)})},
         "# screen\n\n# first\n[[slot]]\nindex = 3 # A\n\n[[slot]]\nindex = 5\n[slot.pressed]\nrow = 1\n"},
        {"remove the first, the last",
         three,
         {whole(Do::remove, {slot(3), slot(5)})},
         "# screen\n\n# second\n[[slot]]\nindex = 9\n"},
        {"remove out of a group",
         "# g\n" + group + "dest_y = 4\n",
         {whole(Do::remove, {slot(7)})},
         "# g\n[[slot]]\nindex = 5\ndest_y = 4\n\n[[slot]]\nindex = 9\ndest_y = 56\n"},
        {"remove a style",
         styled,
         {whole(Do::remove, {{Of::style, 0, "a", ""}})},
         "[[slot]]\nindex = 1\nstyle = \"a\"\n"},
    });
}

TEST(SourceEdit, RenumberingTakesAlongWhatRefersToTheRecord) {
    const std::string lit = "\n[[toggle]]\nindex = 1\ncopy = 1\n\n[[slot]]\nindex = 4\nactivated = 1\n";
    expect_cases({
        {"slot with its toggle record",
         one + "toggle = 1\n" + lit,
         {whole(Do::renumber, {slot(1)}, 30)},
         "[[slot]]\nindex = 30\ntoggle = 30\n\n[[toggle]]\nindex = 30\ncopy = 30\n\n"
         "[[slot]]\nindex = 4\nactivated = 30\n"},
        {"slot that is not lit",
         one + lit,
         {whole(Do::renumber, {slot(1)}, 30)},
         "[[slot]]\nindex = 30\n\n[[toggle]]\nindex = 1\ncopy = 30\n\n[[slot]]\nindex = 4\nactivated = 1\n"},
        {"toggle record",
         one + lit,
         {whole(Do::renumber, {{Of::toggle, 1, "", ""}}, 8)},
         one + "\n[[toggle]]\nindex = 8\ncopy = 1\n\n[[slot]]\nindex = 4\nactivated = 8\n"},
        {"group by one of its records",
         group,
         {whole(Do::renumber, {slot(7)}, 9)},
         "[[slot]]\nindex = 7" + group.substr(group.find("\nrepeat"))},
        {"taken", one + lit, {whole(Do::renumber, {slot(1)}, 4)}, "!slot 4 is described in line 8"},
        {"slot whose style is lit, but not the slot",
         styled + "highlight = false\n" + lit,
         {whole(Do::renumber, {slot(1)}, 30)},
         "[style.a]\nrow = 4\ntext = { en = \"A\", de = \"B\" }\nhighlight = { row = 5 }\n[[slot]]\nindex = 30\n"
         "style = \"a\"\nhighlight = false\n\n[[toggle]]\nindex = 1\ncopy = 30\n\n[[slot]]\nindex = 4\n"
         "activated = 1\n"},
        {"record and group by names of the source's own",
         "names.number = { first = 5, rows = 3 }\n[[slot]]\nindex = \"first\"\nrepeat = { count = \"rows\" }\n",
         {whole(Do::renumber, {slot(7)}, 9)},
         "names.number = { first = 5, rows = 3 }\n[[slot]]\nindex = 7\nrepeat = { count = \"rows\" }\n"},
    });
}

TEST(SourceEdit, GroupsWithAlignedTextsAreSplitOnlyIntoTheSameRecords) {
    expect_cases({
        {"one place for all pressed looks",
         "[style.a]\npressed = { index = 20 }\n" + group +
             "style = \"a\"\nalign = \"centre\"\nbox_width = 90\ntext = \"A\"\n",
         {whole(Do::split, {slot(5)})},
         "!the group cannot be written out"},
    });
}

TEST(SourceEdit, SlotsThatTheProgramKnowsKeepTheirNumbers) {
    const std::string menu = "[[slot]]\nindex = 8\n";
    for (const Do what : {Do::remove, Do::renumber})
        expect_cases({{"preview",
                       menu,
                       {whole(what, {slot(8)}, 40)},
                       "!the program knows this slot by its number: slot 8 is the preview"}},
                     "vcc");
    expect_cases({{"free elsewhere", menu, {whole(Do::renumber, {slot(8)}, 40)}, "[[slot]]\nindex = 40\n"}},
                 "vcc_options");
}

// --- the built-in screens

struct GameScreen {
    std::string name, text;
};

std::vector<GameScreen> game_screens() {
    std::vector<GameScreen> screens;
    for (const auto& file : std::filesystem::directory_iterator(VELDOR_SOURCE_DIR "/game/screens"))
        if (file.path().extension() == ".toml")
            screens.push_back({file.path().stem().string(), *read_file(file.path().string())});
    return screens;
}

TEST(SourceEdit, NoOperationLeavesTheBytes) {
    for (const GameScreen& screen : game_screens())
        EXPECT_EQ(*apply(screen.text, DocumentKind::screen, {}, {screen.name}), screen.text);
}

/// Sets a field of a slot in one language, and looks at every record.
void expect_only_change(const GameScreen& screen, const ScreenSource& before, std::size_t index,
                        const std::string& field, const Value& value, std::size_t language) {
    const auto where = screen.name + " slot " + std::to_string(index) + " " + field;
    const Operation operation = set(slot(static_cast<int>(index)), field, value, std::string(languages[language].code));
    const auto edited = apply(screen.text, DocumentKind::screen, {{operation}}, {});
    ASSERT_TRUE(edited) << where << ": " << edited.reason();
    EXPECT_EQ(unchanged(*edited, change_between(screen.text, *edited)), screen.text) << where << ": undone";
    const ScreenSource after = read_screen_source(*edited);
    ASSERT_TRUE(after.faults.empty()) << where << ": " << text_of_fault(after.faults.front(), false);
    const Field* const number = find_number_field(field);
    for (std::size_t i = 0; i < languages.size(); ++i) {
        const auto &old = before.screen.records[i].slots, &now = after.screen.records[i].slots;
        const auto line_of = [&](std::size_t n) { return before.places[i].slots[n].whole.line; };
        ASSERT_EQ(old.size(), now.size());
        for (std::size_t n = 0; n < old.size(); ++n) {
            Slot wanted = old[n];
            if (i == language && number && line_of(n) == line_of(index)) // a group moves together
                wanted.*number->member +=
                    static_cast<std::int32_t>(std::get<std::int64_t>(value)) - old[index].*number->member;
            if (i == language && !number && n == index)
                store_text(wanted.text, std::get<std::string>(value));
            ASSERT_EQ(std::memcmp(&now[n], &wanted, sizeof wanted), 0) << where << ": record " << n;
        }
    }
}

TEST(SourceEdit, SetChangesThisRecordAndNoOther) {
    constexpr const char* fields[] = {"dest_x", "row", "fore_colour", "action", "help_number", "box_width", "buffer"};
    std::size_t turn = 0;
    for (const GameScreen& screen : game_screens()) {
        const ScreenSource source = read_screen_source(screen.text);
        for (std::size_t index = 0; index < source.places[0].slots.size(); ++index) {
            if (source.places[0].slots[index].whole.line == 0)
                continue; // fills a gap
            expect_only_change(screen, source, index, fields[turn % std::size(fields)], 77, turn % 2);
            expect_only_change(screen, source, index, "text", "Neu \"x\"", turn++ % 2);
        }
    }
    EXPECT_GT(turn, 100U);
}

TEST(SourceEdit, SplittingTheGroupsLeavesEveryRecordAsItIs) {
    int groups = 0;
    for (const GameScreen& screen : game_screens()) {
        const ScreenSource source = read_screen_source(screen.text);
        const auto description = describe(screen.text, DocumentKind::screen, {});
        for (const auto& each : description->slots) {
            if (each["repeat"].is_null() || each["repeat"]["position"] != 1)
                continue;
            const auto split =
                apply(screen.text, DocumentKind::screen, {{whole(Do::split, {slot(each["index"])})}}, {});
            ASSERT_TRUE(split) << screen.name << " slot " << each["index"] << ": " << split.reason();
            EXPECT_TRUE(describes(*split, source.screen)) << screen.name << " slot " << each["index"];
            ++groups;
        }
    }
    EXPECT_EQ(groups, 8);
}

} // namespace
} // namespace vcc::kit::edit
