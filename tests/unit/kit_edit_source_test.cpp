// Operations on documents: the exact text that each leaves, and on the built-in screens that nothing else changes.
#include "vcckit/edit/document_kinds.h"
#include "vcckit/edit/history.h"
#include "vcckit/record/fields.h"
#include "vcckit/source/screen_source.h"
#include "vcckit/source/unpack.h"

#include "core/files.h"
#include "core/text.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <regex>

namespace vcc::kit::edit {
namespace {

using Do = Operation::Do;
using Of = Address::Of;

using Language = std::optional<std::size_t>;
constexpr Language en = 0, de = 1;

Address slot(int index, const std::string& look = {}) {
    return {Of::slot, index, "", look};
}

Operation set(const Address& of, const std::string& field, Value value, Language language = {}) {
    return {.of = {of}, .field = field, .language = language, .value = std::move(value)};
}

Operation unset(const Address& of, const std::string& field, Language language = {}) {
    return {.what = Do::unset, .of = {of}, .field = field, .language = language};
}

struct Case {
    const char* what;
    std::vector<Operation> operations;
    std::string text;         ///< with its changes as <before|after>
    std::string refused = {}; ///< how the reason begins when there is no change
};

/// One side of the changes.
std::string side(const std::string& text, const char* group) {
    static const std::regex change("<([^|]*)\\|([^>]*)>");
    return std::regex_replace(text, change, group);
}

void expect_cases(const std::vector<Case>& cases, DocumentKind kind = DocumentKind::screen) {
    for (const Case& each : cases) {
        std::string got;
        try {
            got = apply(side(each.text, "$1"), kind, each.operations);
        } catch (const Refused& refused) {
            got = std::string(refused.what()).substr(0, each.refused.size());
        }
        EXPECT_EQ(got, each.refused.empty() ? side(each.text, "$2") : each.refused) << each.what;
    }
}

const Address style_a{Of::style, 0, "a"}, toggle_1{Of::toggle, 1};
const std::string one = "[[slot]]\nindex = 1\n";
const std::string group = "[[slot]]\nindex = 5\nrepeat = { count = 3, step = 2, dest_y = 26 }\n";
const std::string styled = "[style.a]\nrow = 4\ntext = { en = \"A\", de = \"B\" }\nhighlight = { row = 5 }\n"
                           "[[slot]]\nindex = 1\nstyle = \"a\"\n";

TEST(SourceEdit, SetWritesWhereTheValueStands) {
    using namespace std::string_literals;
    expect_cases({
        {"number, comment", {set(slot(1), "row", 40)}, one + "row =  <3|40> # three\n"},
        {"same number in another spelling", {set(slot(1), "row", 16)}, one + "row = 0x10\n"},
        {"new field", {set(slot(1), "row", 4)}, one + "<|row = 4\n># end\n"},
        {"no final line end", {set(slot(1), "row", 4)}, "[[slot]]\nindex = 1<|\nrow = 4>"},
        {"CRLF, tabs", {set(slot(1), "row", 4)}, "[[slot]]\r\n\tindex = 1\r\n<|\trow = 4\r\n>"},
        {"name", {set(slot(1), "font", "mono_16"s)}, one + "font = <3|\"mono_16\">\n"},
        {"a number's name", {set(slot(1), "fore_colour", 14)}, one + "<|fore_colour = \"yellow\"\n>"},
        {"own name", {set(slot(1), "sound", 7)}, "names.sound.hit = 7\n[[slot]]\nindex = 1\n<|sound = \"hit\"\n>"},
        {"unknown name", {set(slot(1), "font", "mono_17"s)}, one, "there is no font \"mono_17\""},
        {"text", {set(slot(1), "text", "\"\\\n\xc3\xa4"s)}, one + "text = <'a'|\"\\\"\\\\\\u000A\xc3\xa4\">\n"},
        {"text beyond ASCII behind no blank", {set(slot(1), "text", "\xc3\xa4"s)}, one + "text=<'a'| \"\xc3\xa4\">\n"},
        {"flag", {set(slot(1), "hidden", false)}, one + "hidden = <true|false>\n"},
        {"shadow colour", {set(slot(1), "shadow", "red"s)}, one + "<|shadow = \"red\"\n>"},
        {"styles",
         {set(slot(1), "style", "a, b"s)},
         "[style.a]\n[style.b]\n[[slot]]\nindex = 1\nstyle = <|[>\"a\"<|, \"b\"]>\n"},
        {"unknown style", {set(slot(1), "style", "a"s)}, one, "there is no [style.a]"},
        {"unknown field", {set(slot(1), "colour", 1)}, one, "there is no field \"colour\""},
        {"wrong kind", {set(slot(1), "row", true)}, one, "row must be a number or a name"},
        {"too large", {set(slot(1), "row", std::int64_t{1} << 31)}, one, "2147483648 does not fit"},
        {"no such slot", {set(slot(2), "row", 1)}, one, "no [[slot]] describes number 2"},
        {"index", {set(slot(1), "index", 2)}, one, "a record gets another number by renumbering it"},
        {"not TOML", {set(slot(1), "row", 1)}, "[[slot]\n", "line 1: "},
        {"the record's own, not the style's", {set(slot(1), "row", 7)}, styled + "<|row = 7\n>"},
        {"style", {set(style_a, "row", 7)}, "[style.a]\nrow = <4|7>\n"},
        {"dotted style", {set(style_a, "column", 7)}, "style.a.row = 1\n<|style.a.column = 7\n>"},
        {"no heading",
         {set(style_a, "row", 7)},
         "[style.a.highlight]\nrow = 1\n",
         "the table has no heading of its own"},
        {"records in a list",
         {set(slot(1), "row", 9), set(slot(3), "row", 8)},
         "slot = [{ index = 1, row = <2|9> }, {index=3<|, row = 8>}]\n"},
    });
}

TEST(SourceEdit, SetInOneLanguageKeepsTheOther) {
    using namespace std::string_literals;
    expect_cases({
        {"plain", {set(slot(1), "row", 4, de)}, one + "row = <3|{ en = 3, de = 4 }>\n"},
        {"same", {set(slot(1), "row", 3, de)}, one + "row = 3\n"},
        {"inline", {set(slot(1), "row", 1, de)}, one + "row = { en = 1, de = <2|1> }\n"},
        {"both of an inline table", {set(slot(1), "row", 7)}, one + "row = { en = <1|7>, de = <2|7> }\n"},
        {"dotted", {set(slot(1), "text", "c"s, en)}, one + "text.en = \"<a|c>\" # A\ntext.de = \"b\"\n"},
        {"headed", {set(slot(1), "text", "c"s, de)}, one + "[slot.text]\nen = \"a\"\nde = \"<b|c>\"\n"},
        {"one is missing", {set(slot(1), "text", "c"s, de)}, one + "text.en = \"a\"\n<|text.de = \"c\"\n>row = 1\n"},
        {"nothing yet", {set(slot(1), "row", 4, de)}, one + "<|row = { en = 0, de = 4 }\n>"},
        {"from the style", {set(slot(1), "text", "C"s, de)}, styled + "<|text = { en = \"A\", de = \"C\" }\n>"},
        {"flag", {set(slot(1), "hidden", true, de)}, one, "hidden is the same in every language"},
    });
}

TEST(SourceEdit, SetInAGroupMovesItsNumbersAndSplitsItsTexts) {
    using namespace std::string_literals;
    expect_cases({
        {"number with step", {set(slot(7), "dest_y", 130)}, group + "dest_y = <100|104>\n"},
        {"number without step", {set(slot(9), "dest_x", 8)}, group + "dest_x = <9|8>\n"},
        {"name with step",
         {set(slot(6), "action", "battle"s)},
         "[[slot]]\nindex = 5\nrepeat = { count = 3, action = 1 }\naction = <\"hq\"|3>\n"},
        {"text in a list",
         {set(slot(7), "text", "x"s, de), set(slot(9), "text", "y"s, de), set(slot(5), "text", "z"s)},
         group +
             "text = [\n  \"<a|z>\", # 1\n  { en = \"b\", de = \"<c|x>\" },\n  <|{ en = >\"d\",<| de = \"y\" },>\n]\n"},
        {"common text", {set(slot(7), "text", "x"s)}, group + "text = <|[>\"a\"<|, \"x\", \"a\"]>\n"},
        {"text of nobody",
         {set(slot(9), "text", "x"s, en)},
         group + "<|text = [\"\", \"\", { en = \"x\", de = \"\" }]\n>"},
        {"list of another length", {set(slot(7), "row", 1)}, group + "row = [1, 2]\n", "a list has 2 values for 3"},
        {"repeat",
         {set(slot(5), "repeat.count", 4), set(slot(5), "repeat.row", 2)},
         "[[slot]]\nindex = 5\nrepeat = { count = <3|4>, step = 2, dest_y = 26<|, row = 2> }\n"},
    });
}

TEST(SourceEdit, LooksTakeFieldsOfTheirOwn) {
    expect_cases({
        {"first", {set(slot(1, "highlight"), "row", 4)}, one + "<|highlight = { row = 4 }\n>"},
        {"further", {set(slot(1, "pressed"), "index", 20)}, one + "pressed = { row = 4<|, index = 20> }\n"},
        {"empty", {set(slot(1, "pressed"), "row", 2)}, one + "pressed = {<| row = 2 >}\n"},
        {"headed",
         {set(slot(1, "highlight"), "column", 3)},
         one + "[slot.highlight]\nrow = 4\n<|column = 3\n>\n[[slot]]\nindex = 2\n"},
        {"dropped before", {set(slot(1, "highlight"), "row", 4)}, one + "highlight = <false|{ row = 4 }>\n"},
        {"beside the style's",
         {set(slot(1, "highlight"), "row", 6, de)},
         styled + "<|highlight = { row = { en = 5, de = 6 } }\n>"},
        {"from the slot",
         {set(slot(1, "highlight"), "row", 6, de)},
         one + "row = 3\n<|highlight = { row = { en = 3, de = 6 } }\n>"},
        {"a look without changes", {set(slot(1), "pressed", true)}, one + "<|pressed = {}\n>"},
        {"no look", {set(slot(1), "pressed", false)}, one + "pressed = <{ row = 1 }|false>\n"},
        {"record of the look", {set(toggle_1, "row", 1)}, one, "toggle record 1 is a look of slot 1"},
    });
}

TEST(SourceEdit, UnsetTakesTheLineOrThePartAway) {
    expect_cases({
        {"line with comment", {unset(slot(1), "row")}, one + "<row = 3 # x\n|>column = 1\n"},
        {"last line without end", {unset(slot(1), "row")}, "[[slot]]\nindex = 1<\nrow = 3|>"},
        {"several lines", {unset(slot(1), "text")}, one + "<text = [\n 'a'\n]\n|>row = 1\n"},
        {"dotted", {unset(slot(1), "text")}, one + "<text.en = 'a'\n|>row = 1\n<text.de = 'b'\n|>"},
        {"headed", {unset(slot(1), "highlight")}, one + "<[slot.highlight]\nrow = 4\n|>"},
        {"first part", {unset(slot(1, "pressed"), "row")}, one + "pressed = { <row = 1, |>column = 2 }\n"},
        {"last part", {unset(slot(1, "pressed"), "column")}, one + "pressed = { row = 1<, column = 2|> }\n"},
        {"a language of a table", {unset(slot(1), "row", de)}, one + "row = <{ en = 1, de = 2 }|1> # x\n"},
        {"a language of dotted keys", {unset(slot(1), "row", en)}, one + "row<.en = 1\nrow.de|> = 2\n"},
        {"bytes are of no language",
         {unset(slot(1), "text", en)},
         one + "text = { raw = '00' }\n",
         "text has no value"},
        {"the style's", {unset(slot(1), "row")}, styled, "row is not written there"},
    });
}

Operation moved(std::vector<Address> of, int dx, int dy, Do what = Do::move) {
    return {.what = what, .of = std::move(of), .dx = dx, .dy = dy};
}

TEST(SourceEdit, MoveAndResizeAddInEveryLanguage) {
    const std::string picture = one + "graphic = 1\n";
    expect_cases({
        {"pixels", {moved({slot(1)}, 2, -9)}, picture + "dest_x = <4|6>\ndest_y.en = <7|-2>\ndest_y.de = <9|0>\n"},
        {"cells", {moved({slot(1)}, 1, 1)}, one + "column = <4|5>\nrow = <5|6>\ndest_x = 9\n"},
        {"nothing written", {moved({slot(1)}, 3, 0)}, picture + "<|dest_x = 3\n>"},
        {"the style's place", {moved({slot(1)}, 0, 2)}, styled + "<|row = 6\n>"},
        {"cells here, pixels there",
         {moved({slot(1)}, 1, 0)},
         one + "dest_x = { en = <5|6>, de = 0 }\ndest_y = 5\n<|column = { en = 0, de = 1 }\n>"},
        {"to the edge, where cells begin",
         {moved({slot(1)}, -1, 0)},
         one + "dest_x = 1\ndest_y = 5\n",
         "dest_x would be 0"},
        {"a group moves once", {moved({slot(5), slot(7), slot(9)}, 0, 3)}, group + "graphic = 1\ndest_y = <10|13>\n"},
        {"parts of a list", {moved({slot(5), slot(9)}, 10, 0)}, group + "graphic = 1\ndest_x = [<1|11>, 2, <3|13>]\n"},
        {"a look",
         {moved({slot(1, "pressed")}, 1, 1)},
         picture + "dest_x = 5\n<|pressed = { dest_x = 6, dest_y = 1 }\n>"},
        {"text window",
         {moved({slot(1)}, 1, 1)},
         one + "graphic = 3\ntext = \"TEXT-WIN\"\n",
         "the slot shows text window 3"},
        {"box", {moved({slot(1)}, 2, 3, Do::resize)}, one + "box_width = <9|11> # w\n<|box_height = 3\n>"},
        {"picture of nothing",
         {moved({slot(1)}, -4, 0, Do::resize)},
         picture + "src_x = 5\nbox_width = 9\n",
         "box_width would be 5, less than 6"},
    });
}

Operation whole(Do what, std::vector<Address> of, int to = 0, std::string text = {}) {
    return {.what = what, .of = std::move(of), .to = to, .text = std::move(text)};
}

const std::string two =
    "# screen\n\n# first\n[[slot]]\nindex = 3 # A\n\n# second\n[[slot]]\nindex = 9\nhighlight = {}\n";

TEST(SourceEdit, RecordsAreMadeCopiedAndTakenAway) {
    expect_cases({
        {"behind the next lower",
         {whole(Do::create, {}, 4, "row = 1\ncolumn = 2")},
         "[[slot]]\nindex = 3 # A\n\n<|[[slot]]\nindex = 4\nrow = 1\ncolumn = 2\n\n># next\n[[slot]]\nindex = 9\n"},
        {"at the end", {whole(Do::create, {}, 10)}, two + "<|\n[[slot]]\nindex = 10\n>"},
        {"before the first",
         {whole(Do::create, {}, 1)},
         "# screen\n\n<|[[slot]]\nindex = 1\n\n># first\n[[slot]]\nindex = 3\n"},
        {"in nothing", {whole(Do::create, {}, 1)}, "<|[[slot]]\nindex = 1\n>"},
        {"CRLF without an end",
         {whole(Do::create, {}, 2, "row = 1")},
         "[[slot]]\r\nindex = 1<|\r\n\r\n[[slot]]\r\nindex = 2\r\nrow = 1>"},
        {"a toggle record", {whole(Do::create, {toggle_1}, 2)}, one + "<|\n[[toggle]]\nindex = 2\n>"},
        {"a style",
         {whole(Do::create, {style_a}, 0, "row = 1")},
         "<|[style.a]\nrow = 1\n\n># x\n[[slot]]\nindex = 1\n"},
        {"a number that is taken", {whole(Do::create, {}, 9)}, two, "slot 9 is described in line 8"},
        {"a number that is none", {whole(Do::create, {}, 200)}, two, "numbers are 0 to 199"},
        {"lines that are none", {whole(Do::create, {}, 4, "row 1")}, two, "the change does not fit"},
        {"copy", {whole(Do::copy, {slot(9)}, 10)}, two + "<|\n[[slot]]\nindex = 10\nhighlight = {}\n>"},
        {"copy with its own pressed look",
         {whole(Do::copy, {slot(1)}, 2)},
         one + "activated = 7\npressed = { index = 7, row = 1 }\n<|\n[[slot]]\nindex = 2\npressed = { row = 1 }\n>"},
        {"copy out of a group",
         {whole(Do::copy, {slot(9)}, 20)},
         group + "dest_y = 4\ntext = ['a', 'b', { en = 'c', de = 'd' }]\n"
                 "<|\n[[slot]]\nindex = 20\ndest_y = 56\ntext = { en = 'c', de = 'd' }\n>"},
        {"remove with its comment",
         {whole(Do::remove, {slot(3)})},
         "# screen\n\n<# first\n[[slot]]\nindex = 3 # A\n\n|># second\n[[slot]]\nindex = 9\n"},
        {"remove the first, the last",
         {whole(Do::remove, {slot(3), slot(5)})},
         "# x\n\n<[[slot]]\nindex = 3 # A\n\n|># y\n[[slot]]\nindex = 9\n<\n[[slot]]\nindex = 5\n[slot.pressed]\n|>"},
        {"remove out of a group",
         {whole(Do::remove, {slot(7)})},
         "# g\n[[slot]]\nindex = 5\n<repeat = { count = 3, step = 2, dest_y = 26 }\n|>dest_y = 4\n"
         "<|\n[[slot]]\nindex = 9\ndest_y = 56\n>"},
        {"remove a style",
         {whole(Do::remove, {style_a})},
         "<[style.a]\nrow = 4\n|>[[slot]]\nindex = 1\nstyle = \"a\"\n"},
    });
}

TEST(SourceEdit, RenumberingTakesAlongWhatRefersToTheRecord) {
    expect_cases({
        {"slot with its toggle record",
         {whole(Do::renumber, {slot(1)}, 30)},
         "[[slot]]\nindex = <1|30>\ntoggle = <1|30>\n\n[[toggle]]\nindex = <1|30>\ncopy = <1|30>\n\n"
         "[[slot]]\nindex = 4\nactivated = <1|30>\n"},
        {"slot that is not lit",
         {whole(Do::renumber, {slot(1)}, 30)},
         "[[slot]]\nindex = <1|30>\n\n[[toggle]]\nindex = 1\ncopy = <1|30>\n\n[[slot]]\nindex = 4\nactivated = 1\n"},
        {"toggle record",
         {whole(Do::renumber, {toggle_1}, 8)},
         one + "\n[[toggle]]\nindex = <1|8>\ncopy = 1\n\n[[slot]]\nindex = 4\nactivated = <1|8>\n"},
        {"group by one of its records",
         {whole(Do::renumber, {slot(7)}, 9)},
         "[[slot]]\nindex = <5|7>\nrepeat = { count = 3, step = 2, dest_y = 26 }\n"},
        {"taken", {whole(Do::renumber, {slot(3)}, 9)}, two, "slot 9 is described in line 8"},
        {"slot whose style is lit, but not the slot",
         {whole(Do::renumber, {slot(1)}, 30)},
         "[style.a]\nhighlight = { row = 5 }\n[[slot]]\nindex = <1|30>\nstyle = \"a\"\nhighlight = false\n\n"
         "[[toggle]]\nindex = 1\ncopy = <1|30>\n\n[[slot]]\nindex = 4\nactivated = 1\n"},
        {"record and group by names of the source's own",
         {whole(Do::renumber, {slot(7)}, 9)},
         "names.number = { first = 5, rows = 3 }\n[[slot]]\nindex = <\"first\"|7>\nrepeat = { count = \"rows\" }\n"},
    });
}

TEST(SourceEdit, GroupsWithAlignedTextsAreSplitOnlyIntoTheSameRecords) {
    expect_cases({
        {"one place for all pressed looks",
         {whole(Do::split, {slot(5)})},
         group + "style = \"a\"\nalign = \"centre\"\nbox_width = 90\ntext = \"A\"\n"
                 "[style.a]\npressed = { index = 20 }\n",
         "the group cannot be written out"},
    });
}

Address window(int index) {
    return {Of::window, index};
}

TEST(WindowEdit, ChangesTheLinesThatSayIt) {
    using namespace std::string_literals;
    const std::string first = "# all\n#\n# first\n+1\nw1\nxo10 left\n", second = "#\n# second\n+19\nf4\n-0\n",
                      both = first + "yo 20\nxu30\nyu40\n-1\n" + second;
    expect_cases(
        {
            {"number", {set(window(1), "left", 11)}, "+1\nxo<10|11> left\n-1\n"},
            {"blank before it", {set(window(1), "yo", -5)}, "+1\nyo <20|-5>\n-1\n"},
            {"style", {set(window(1), "style", -1)}, "+1\n-<1|-1>\n"},
            {"new line", {set(window(1), "shadow", 8)}, first + "-1\n<|s8\n>" + second},
            {"new line at the end", {set(window(19), "font", "mono_14"s)}, both + "<|t4\n>"},
            {"CRLF without an end", {set(window(1), "s", 1)}, "+1\r\n-0<|\r\ns1>"},
            {"title", {set(window(1), "title", "Ziel"s)}, first + "-1\n<|Ziel\n>" + second},
            {"title like a key", {set(window(1), "title", "goal"s)}, both, "a title cannot begin with \"g\""},
            {"unset", {unset(window(19), "f")}, "+19\n<f4\n|>-0\n"},
            {"style is needed", {unset(window(1), "-")}, both, "every window needs its style"},
            {"move", {moved({window(1)}, 5, 0)}, "+1\nxo<10|15> left\nyo 20\nxu<30|35>\nyu40\n-1\n"},
            {"resize", {moved({window(1)}, 0, -20, Do::resize)}, "+1\nyo 20\nyu<40|20>\n-1\n"},
            {"to nothing", {moved({window(1)}, 0, -21, Do::resize)}, both, "the window would end before it begins"},
            {"create", {whole(Do::create, {}, 3, "xo4")}, both + "<|+3\nxo4\n-0\n>"},
            {"create what is there", {whole(Do::create, {}, 19)}, both, "there is a window 19 already"},
            {"copy", {whole(Do::copy, {window(19)}, 4)}, both + "<|+4\nf4\n-0\n>"},
            {"remove", {whole(Do::remove, {window(1)})}, "# all\n<#\n# first\n+1\nxo10\n-1\n|>" + second},
            {"remove a fixed one", {whole(Do::remove, {window(19)})}, both, "the program knows this window"},
            {"renumber", {whole(Do::renumber, {window(1)}, 29)}, "# first\n+<1|29>\n-1\n"},
            {"beyond the table", {whole(Do::renumber, {window(1)}, 30)}, both, "windows are numbered 0 to 29"},
            {"none", {set(window(7), "left", 1)}, both, "there is no window 7"},
        },
        DocumentKind::windows);
    const auto windows = row_of(DocumentKind::windows).describe("+1\n-1\n007\n", "").windows;
    EXPECT_EQ(windows.at(0)["values"]["title"], "007") << "not the number 7";
}

TEST(BufferEdit, ChangesTheLinesThatSayIt) {
    using namespace std::string_literals;
    const auto buffer = [](int index) { return Address{Of::buffer, index}; };
    const std::string list = "# all\r\n#\r\n# screen\r\n+0\r\na.pcx\r\n# more\r\n+5\r\nb.pcx\r\nc.pcx";
    expect_cases(
        {
            {"create", {whole(Do::create, {}, 9, "d.pcx")}, list + "<|\r\n+9\r\nd.pcx>"},
            {"create what is there", {whole(Do::create, {}, 5, "d.pcx")}, list, "buffer 5 holds b.pcx already"},
            {"the program's", {whole(Do::create, {}, 21, "d.pcx")}, list, "buffers for pictures are 0 to 20"},
            {"name like a key", {whole(Do::create, {}, 9, "+d.pcx")}, list, "a picture's name cannot begin"},
            {"name of two lines", {whole(Do::create, {}, 9, "d.pcx\n+0")}, list, "a picture is named in one line"},
            {"behind a bad line", {whole(Do::create, {}, 9, "d.pcx")}, "+0\na\n+25\n", "line 3 names no buffer"},
            {"set", {set(buffer(5), "picture", "d.pcx"s)}, "+5\nb.pcx\n<c|d>.pcx"},
            {"remove", {whole(Do::remove, {buffer(5)})}, "+0\na\n<# more\n+5\nb\n|>"},
            {"remove a fixed one", {whole(Do::remove, {buffer(0)})}, list, "the program knows this buffer"},
            {"none", {whole(Do::remove, {buffer(7)})}, list, "the list has no buffer 7"},
            {"move", {moved({buffer(5)}, 1, 0)}, list, "buffers are made"},
            {"other kind", {whole(Do::remove, {window(5)})}, list, "the list has no window 5"},
        },
        DocumentKind::buffers);
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

/// Sets fields of all slots of a screen, one after the other, and looks at every record.
TEST(SourceEdit, SetChangesThisRecordAndNoOther) {
    constexpr const char* fields[] = {"dest_x", "row", "fore_colour", "action", "help_number", "box_width", "buffer"};
    std::size_t turn = 0;
    for (const GameScreen& screen : game_screens()) {
        ScreenSource wanted = read_screen_source(screen.text);
        std::vector<Operation> operations;
        for (std::size_t index = 0; index < wanted.places[0].slots.size(); ++index) {
            if (wanted.places[0].slots[index].whole.line == 0)
                continue; // fills a gap
            const std::size_t language = turn % 2;
            const auto& places = wanted.places[language].slots;
            auto& records = wanted.screen.records[language].slots;
            const Field* const number = turn % 3 == 0 ? nullptr : find_number_field(fields[turn % std::size(fields)]);
            ++turn;
            operations.push_back(set(slot(static_cast<int>(index)), number ? std::string(number->name) : "text",
                                     number ? Value(77) : Value("Neu \"x\""), language));
            if (!number) {
                store_text(records[index].text, "Neu \"x\"");
                continue;
            }
            const std::int32_t added = 77 - records[index].*number->member;
            for (std::size_t n = 0; n < records.size(); ++n)
                if (places[n].whole.line == places[index].whole.line) // a group moves together
                    records[n].*number->member += added;
        }
        const std::string edited = apply(screen.text, DocumentKind::screen, operations);
        EXPECT_EQ(unchanged(edited, change_between(screen.text, edited)), screen.text) << screen.name << ": undone";
        const ScreenSource after = read_screen_source(edited);
        ASSERT_TRUE(after.faults.empty()) << screen.name << text_of_fault(after.faults.front(), false);
        for (std::size_t i = 0; i < languages.size(); ++i) {
            const auto &now = after.screen.records[i].slots, &then = wanted.screen.records[i].slots;
            ASSERT_EQ(now.size(), then.size());
            for (std::size_t n = 0; n < now.size(); ++n)
                EXPECT_EQ(std::memcmp(&now[n], &then[n], sizeof now[n]), 0) << screen.name << i << ": record " << n;
        }
    }
    EXPECT_GT(turn, 100U);
}

TEST(SourceEdit, SplittingTheGroupsLeavesEveryRecordAsItIs) {
    int groups = 0;
    for (const GameScreen& screen : game_screens()) {
        const ScreenSource source = read_screen_source(screen.text);
        for (const auto& each : row_of(DocumentKind::screen).describe(screen.text, "").slots) {
            if (each["repeat"].is_null() || each["repeat"]["position"] != 1)
                continue;
            const auto split = apply(screen.text, DocumentKind::screen, {{whole(Do::split, {slot(each["index"])})}});
            EXPECT_TRUE(describes(split, source.screen)) << screen.name << " slot " << each["index"];
            ++groups;
        }
    }
    EXPECT_EQ(groups, 8);
}

} // namespace
} // namespace vcc::kit::edit
