// Screen sources: records, faults, and back from files to sources.
#include "vcckit/record/fields.h"
#include "vcckit/record/setting_rows.h"
#include "vcckit/source/screen_source.h"
#include "vcckit/source/unpack.h"

#include "core/files.h"
#include "core/text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <random>

namespace vcc::kit {
namespace {

Screen screen_of(const std::string& source) {
    const ScreenSource read = read_screen_source(source);
    for (const Fault& fault : read.faults)
        ADD_FAILURE() << text_of_fault(fault, false);
    return read.screen;
}

TEST(ScreenSource, SlotTakesFieldsFromItsStylesAndItself) {
    const Screen screen = screen_of(R"(
[names.colour]
gold = 164
[style.label]
font = "mono_16"
fore_colour = "white"
[style.button]
style = "label"
back_colour = "steel_2"
highlight = { fore_colour = "yellow" }
pressed = { back_colour = "gold" }
[[slot]]
index = 2
style = "button"
fore_colour = "gold"
text = { en = "Mill", de = "Mühle" }
shadow = 12
[[slot]]
index = 4
style = "button"
highlight = false
pressed = { index = 9 }
[[slot]]
index = 3
style = "button"
highlight = 0
pressed = 0
)");
    const auto& [english, german] = screen.records;
    const Slot& mill = english.slots.at(2);
    EXPECT_EQ((std::array{mill.font, mill.fore_colour, mill.back_colour}), (std::array{7, 164, 18}));
    EXPECT_EQ(text_of(german.slots[2].text), "M\xfchle");
    EXPECT_TRUE(has_shadow(mill));
    EXPECT_EQ(text_of(mill.sound_flags), "12");
    EXPECT_EQ(mill.toggle, 2) << "highlighted by the toggle record of its own number";
    EXPECT_EQ(english.toggles.at(2).fore_colour, 14);
    EXPECT_EQ(mill.activated, 5) << "a pressed look without a place lies behind the slots";
    EXPECT_EQ(english.toggles.at(5).back_colour, 164);
    EXPECT_EQ(std::pair(english.slots.at(3).toggle, english.slots[3].activated), std::pair(-1, 0));
    const Slot& plain = english.slots.at(4);
    EXPECT_EQ(std::pair(plain.toggle, plain.activated), std::pair(-1, 9));
}

TEST(ScreenSource, StylesThatBuildOnOneAnotherCrosswiseAllCount) {
    std::string source = "[[slot]]\nindex = 1\nstyle = [\"s0\", \"last\"]\nsize = 7\n"
                         "[style.last]\ncolumn = 3\n";
    for (int i = 0; i < 40; ++i) {
        const std::string next = std::to_string(i + 1);
        source += "[style.s" + std::to_string(i) + "]\nfont = " + std::to_string(i % 10) + "\nrow = " + next + "\n" +
                  (i < 39 ? "style = [\"s" + next + "\", \"s" + next + "\"]\n" : "");
    }
    const Slot slot = screen_of(source).records[0].slots.at(1);
    EXPECT_EQ((std::array{slot.size, slot.row, slot.column}), (std::array{7, 1, 3}));
}

TEST(ScreenSource, MistakesAreNamedWithLineRecordAndField) {
    const std::string slot = "[[slot]]\nindex = 3\n";
    const std::tuple<std::string, std::string> cases[] = {
        {"[[slot]]\nindex = 200", ":2:9: VK006 slot 200: index: must be 0 to 199"},
        {"[[slot]]\nrow = 1", ":1:1: VK007 slot: index: is missing"},
        {slot + "style = \"a\"\n[style.a]\nstyle = \"a\"", ":5:9: VK010 style a: style: it builds on itself"},
        {slot + "repeat = { count = 0 }", ":3:20: VK015 slot: repeat.count: must be 1 to 200"},
        {"[[toggle]]\nindex = 1\ncopy = 7", ":3:8: VK019 toggle 1: copy: there is no such slot"},
        {"slots = 1", ":1:1: VK003 unknown entry \"slots\""},
        {"slot_count = 201\n" + slot, ":1:14: VK006 slot_count: must be 0 to 200"},
        {"toggle = 1\n" + slot, ":1:10: VK005 toggle: must be written as [[toggle]]"},
        {"name = \"a/b\"", ":1:8: VK016 name: must be a file name"},
        {slot + "font = 1.5", ":3:8: VK005 slot 3: font: must be a number or a name"},
        {slot + "row = 4000000000", ":3:7: VK006 slot 3: row: 4000000000 does not fit in 32 bits"},
        {slot + "name = \"12345678901234567890123456789012\"",
         ":3:8: VK011 slot 3: name: is 32 characters long, 31 fit"},
        {slot + "text = \"\u2713\"", ":3:8: VK012 slot 3: text: has a character outside Windows Latin-1"},
        {slot + "text = { en = \"a\" }", ":3:8: VK013 slot 3: text: has no value for the language \"de\""},
        {slot + "text = { english = \"a\" }", ":3:10: VK013 slot 3: text: \"english\" is no language"},
        {"language = \"fr\"", ":1:12: VK004 language: unknown language \"fr\""},
        {slot + "text = [\"a\", \"b\"]", ":3:8: VK014 slot 3: text: has 2 values for 1 records"},
        {slot + "text = { raw = \"00\" }",
         ":3:8: VK018 slot 3: text: raw must be 91 bytes, two hexadecimal digits each"},
        {slot + "align = \"middle\"", ":3:9: VK004 slot 3: align: unknown word \"middle\""},
        {slot + "align = \"left\"", ":3:9: VK021 slot 3: align: the text has no width to be aligned in"},
        // what the TOML reader never sees
        {std::string(33, '.'), ":1:33: VK002 a key of more than 32 parts"},
        {"text = \"\"\"a\\\n\n  \u00fc\"\"\"", ":3:3: VK002 U+00FC behind a backslash"},
        {slot + "[^[slot]]", ":3:2: VK002 a heading without a name"},
        {slot + "text = [\n[ {", ":4:4: VK001 "},
        {"a =1'\u00fc'", ":1:6: VK002 U+00FC in a text that follows a word"},
        {"text = \"a\"\n# \xc3", ":2:2: VK002 the source is not UTF-8"},
    };
    for (const auto& [source, told] : cases) {
        const auto faults = read_screen_source(source).faults;
        ASSERT_EQ(faults.size(), 1u) << source;
        EXPECT_EQ(text_of_fault(faults[0], false).substr(0, told.size()), told) << source;
    }
}

TEST(ScreenSource, TextsAreAlignedInTheirBoxes) {
    const TextMeasure measure{true, [](int, std::string_view text) { return 8 * static_cast<int>(text.size()); },
                              [](int) { return 14; },
                              [](const Slot& slot) {
                                  return Point{slot.dest_x, slot.dest_y};
                              }};
    const ScreenSource read = read_screen_source(R"(
[style.wide]
dest_x = 100
dest_y = 50
box_width = 101
text = "Word"
align = "centre"
[[slot]]
index = 0
style = "wide"
[[slot]]
index = 1
style = "wide"
align = "right"
padding = [5, 3]
[[slot]]
index = 2
style = "wide"
box_height = 30
back_colour = 3
[[slot]]
index = 3
style = "wide"
box_height = 30
toggle = 0
)",
                                                 measure);
    ASSERT_TRUE(read.faults.empty()) << text_of_fault(read.faults[0], false);
    const std::vector<Slot>& slots = read.screen.records[0].slots;
    const auto place = [&](std::size_t index) { return std::pair(slots.at(index).dest_x, slots[index].dest_y); };
    EXPECT_EQ(place(0), std::pair(100 + 34, 50)) << "to the pixel between the edges";
    EXPECT_EQ(place(1), std::pair(100 + 69 - 5, 50 + 3));
    EXPECT_EQ(place(2), std::pair(100, 50)) << "the box of a label stays";
    EXPECT_EQ(text_of(slots[2].text), "");
    ASSERT_EQ(slots.size(), 5u) << "and its text is a record behind all others";
    EXPECT_EQ(place(4), std::pair(100 + 34, 50 + 8));
    EXPECT_EQ(text_of(slots[3].text), "    Word") << "blanks, where box and text are one record";
}

TEST(ScreenSource, CharactersBeyondAsciiStandInTextsAndComments) {
    const Screen screen = screen_of("\xEF\xBB\xBF# \u00a0\n[[slot]]\nindex = 0\n'help_file' = '\u00e4\\'\n"
                                    "text = \"\"\"\"\u00fc\u20ac\\\"\\\n  x\u00fc\"\"\"\"\n");
    EXPECT_EQ(text_of(screen.records[0].slots.at(0).text), "\"\xfc\x80\"x\xfc\"");
}

TEST(Unpack, PackingGivesTheSameBytesWhateverTheRecordsHold) {
    std::mt19937 random(7);
    const auto random_record = [&random] {
        Slot slot = random() % 4 == 0 ? gap_slot() : empty_slot();
        // Few bytes leave texts and small numbers whole, many leave nothing whole.
        for (auto changes = random() % 2 * (random() % 400); changes > 0; --changes)
            reinterpret_cast<unsigned char*>(&slot)[random() % sizeof slot] = static_cast<unsigned char>(random());
        return slot;
    };
    for (unsigned round = 0; round < 30; ++round) {
        Screen screen;
        for (ScreenRecords& records : screen.records) {
            records = {std::vector<Slot>(round % 8), std::vector<Slot>(round % 9), true};
            std::ranges::generate(records.slots, random_record);
            std::ranges::generate(records.toggles, random_record);
        }
        const Screen again = screen_of(write_screen_source(screen));
        for (std::size_t i = 0; i < languages.size(); ++i) {
            EXPECT_EQ(slot_file_bytes(again.records[i].slots), slot_file_bytes(screen.records[i].slots));
            EXPECT_EQ(slot_file_bytes(again.records[i].toggles), slot_file_bytes(screen.records[i].toggles));
            EXPECT_EQ(again.records[i].has_toggle_file, screen.records[i].has_toggle_file);
        }
    }
}

TEST(Unpack, StylesRepeatsAndLooksAreFoundAgain) {
    for (const auto& [name, most_lines] :
         {std::pair("vcc", 183), {"vcc_options", 450}, {"vcc_options_info", 32}, {"mess", 79}}) {
        const auto source = read_file(std::string(VELDOR_SOURCE_DIR "/game/screens/") + name + ".toml");
        ASSERT_TRUE(source);
        const Screen screen = screen_of(*source);
        const std::string written = write_screen_source(screen);
        EXPECT_LE(std::ranges::count(written, '\n'), most_lines) << name;
        EXPECT_TRUE(describes(written, screen)) << name;
    }
}

TEST(Unpack, OneLanguageSaysWhichAndDescribesNoOther) {
    Screen screen = screen_of("language = \"de\"\n[[slot]]\nindex = 0\ntext = { de = \"B\" }\n");
    EXPECT_TRUE(screen.describes(1));
    EXPECT_FALSE(screen.describes(0));
    const std::string written = write_screen_source(screen);
    EXPECT_TRUE(written.starts_with("language = \"de\"\n")) << written;
    EXPECT_TRUE(describes("[[slot]]\nindex = 0\ntext = { en = \"A\", de = \"B\" }\n", screen)) << "one for both";
    screen.language.reset();
    EXPECT_FALSE(describes(written, screen)) << "the other language is missing";
}

TEST(SettingRows, AreTheTableOfTheDocument) {
    const std::string name = VELDOR_SOURCE_DIR "/docs/settings.md";
    const std::string document = read_file(name).value_or("");
    const std::size_t table = document.find("## `[");
    if (std::getenv("VELDOR_WRITE_DOCS") != nullptr)
        std::ofstream(name, std::ios::binary) << document.substr(0, table) << settings_table();
    else
        EXPECT_EQ(document.substr(table), settings_table()) << "run this test with VELDOR_WRITE_DOCS=1 to renew it";
}

} // namespace
} // namespace vcc::kit
