// Screen sources: what they describe, what is wrong with them, and the way back from files.
#include "fields.h"
#include "latin1.h"
#include "names.h"
#include "screen_source.h"
#include "unpack.h"

#include "core/text.h"

#include <gtest/gtest.h>

#include <random>

namespace vcc::kit {
namespace {

Screen screen_of(const std::string& source) {
    const ScreenSource read = read_screen_source(source);
    for (const SourceFault& fault : read.faults)
        ADD_FAILURE() << fault.line << ": " << fault.text;
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
action = "factory"
shadow = 12
[[slot]]
index = 4
style = "button"
highlight = false
pressed = { index = 9, sound = 7 }
focus_skip = true
)");
    const auto& [english, german] = screen.records;
    ASSERT_EQ(english.slots.size(), 5u);
    for (const std::size_t gap : {0u, 1u, 3u}) {
        EXPECT_TRUE(is_hidden(english.slots[gap]));
        EXPECT_EQ(english.slots[gap].toggle, -1);
    }
    const Slot& mill = english.slots[2];
    EXPECT_EQ((std::array{mill.font, mill.fore_colour, mill.back_colour, mill.action}), (std::array{7, 164, 18, 3}));
    EXPECT_EQ(text_of(mill.text), "Mill");
    EXPECT_EQ(text_of(german.slots[2].text), "M\xfchle");
    EXPECT_TRUE(has_shadow(mill));
    EXPECT_EQ(text_of(mill.sound_flags), "12");
    EXPECT_EQ(mill.toggle, 2) << "highlighted by the toggle record of its own number";
    EXPECT_EQ(english.toggles[2].fore_colour, 14);
    EXPECT_EQ(english.toggles[2].back_colour, 18);
    EXPECT_EQ(mill.activated, 5) << "a pressed look without a place lies behind the slots";
    EXPECT_EQ(english.toggles[5].back_colour, 164);
    EXPECT_EQ(english.toggles[5].action, 3);

    const Slot& plain = english.slots[4];
    EXPECT_EQ(std::pair(plain.toggle, plain.activated), std::pair(-1, 9));
    EXPECT_EQ(english.toggles[9].sound, 7);
    EXPECT_EQ(text_of(plain.draw_flags), "  x");
    EXPECT_TRUE(is_hidden(english.toggles[4]));
}

TEST(ScreenSource, RepeatedSlotsStepTheirIndexFieldsAndTexts) {
    const Screen screen = screen_of(R"(
[[slot]]
index = 57
repeat = { count = 3, step = 2, dest_y = 14, action = -1 }
text = ["OFF", { en = "Low", de = "Leise" }, "MAX"]
dest_y = 100
action = 20
pressed = { index = 10 }
[[toggle]]
index = 50
copy = 59
repeat = { count = 2 }
)");
    const ScreenRecords& german = screen.records[1];
    ASSERT_EQ(german.slots.size(), 62u);
    for (const auto& [index, text, y, action, pressed] :
         {std::tuple(57u, "OFF", 100, 20, 10), {59u, "Leise", 114, 19, 12}, {61u, "MAX", 128, 18, 14}}) {
        const Slot& slot = german.slots[index];
        EXPECT_EQ(text_of(slot.text), text);
        EXPECT_EQ((std::array{slot.dest_y, slot.action, slot.activated}), (std::array{y, action, pressed}));
    }
    for (const std::size_t copy : {50u, 51u})
        EXPECT_EQ(text_of(german.toggles[copy].text), "Leise");
}

TEST(ScreenSource, MistakesAreNamedWithLineRecordAndField) {
    struct Case {
        std::string source;
        int line;
        std::string told;
    };
    std::vector<Case> cases{
        {"[[slot]]\nindex = 3\n\naction = \"fly\"", 4, "slot 3: action: unknown action \"fly\""},
        {"[[slot]]\nindex = 200", 2, "slot 200: index: must be 0 to 199"},
        {"[[slot]]\nrow = 1", 1, "slot: index: is missing"},
        {"[[slot]]\nindex = 1\n[[slot]]\nindex = 1", 3, "slot 1: slot 1 is described twice"},
        {"[[slot]]\nindex = 1\nhighlight = {}\n[[toggle]]\nindex = 1", 4, "toggle 1: toggle 1 is described twice"},
        {"[[slot]]\nindex = 1\nstyle = \"a\"", 3, "style: there is no [style.a]"},
        {"[[slot]]\nindex = 1\nstyle = \"a\"\n[style.a]\nstyle = \"a\"", 4, "style: it builds on itself"},
        {"[[slot]]\nindex = 1\nrepeat = { count = 0 }", 3, "slot: repeat.count: must be 1 to 200"},
        {"[[toggle]]\nindex = 1\ncopy = 7", 3, "toggle 1: copy: there is no such slot"},
        {"slots = 1", 1, "unknown entry \"slots\""},
        {"[names.color]\na = 1", 1, "names: \"color\" is none of"},
        {"[[slot]\nindex = 1", 1, ""},
        // characters that are no business of the TOML reader
        {"[[slot]]\nindex\u00a0= 1", 2, "U+00A0 is no blank here"},
        {"[[slot]]\nindex = 1\n\u00fcber = 2", 3, "U+00FC outside a text"},
        {"text = 'a\\' \u3000", 1, "U+3000 is no blank here"},
        {"text = \"\"\"\"\u00fc\"\"\"\"\"\n\u2028", 2, "U+2028 is no blank here"},
        {"text = \"\"\"a\\\n\n  \u00fc\"\"\"", 3, "U+00FC behind a backslash"},
        {"a =1'\u00fc'", 1, "U+00FC in a text that follows a word"},
        {"a = 1.'\u00fc'", 1, "U+00FC in a text that follows a word"},
        {"a = 0[['\u00fc'", 1, "U+00FC in a text that follows a word"},
        {"text = \"a\"\n# \xc3", 2, "is not UTF-8"},
        {"text = \"\xed\xa0\x80\"", 1, "is not UTF-8"},
        {"name = \"a/b\"", 1, "name: must be a file name"},
    };
    for (const auto& [field, told] :
         {std::pair("colour = 1", "unknown field \"colour\""),
          {"highlight = { style = \"a\" }", "unknown field \"style\""},
          {"font = 1.5", "font: must be a number or a name"},
          {"row = 4000000000", "row: 4000000000 does not fit in 32 bits"},
          {"name = \"12345678901234567890123456789012\"", "name: is 32 characters long, 31 fit"},
          {"text = \"\u2713\"", "text: has a character outside Windows Latin-1"},
          {"text = { en = \"a\" }", "text: has no value for the language \"de\""},
          {"text = { en = \"a\", fr = \"b\" }", "text: \"fr\" is no language"},
          {"text = [\"a\", \"b\"]", "text: has 2 values for 1 records"},
          {"text = { raw = \"00\" }", "text: raw must be 91 bytes, two hexadecimal digits each"}})
        cases.push_back({std::string("[[slot]]\nindex = 3\n") + field, 3, std::string("slot 3: ") + told});
    for (const Case& c : cases) {
        SCOPED_TRACE(c.source);
        const auto faults = read_screen_source(c.source).faults;
        ASSERT_FALSE(faults.empty());
        EXPECT_EQ(faults[0].line, c.line);
        EXPECT_EQ(faults[0].text.substr(0, c.told.size()), c.told);
    }
}

TEST(ScreenSource, CharactersBeyondAsciiStandInTextsAndComments) {
    const Screen screen = screen_of("\xEF\xBB\xBF# \u00a0\nname = 'm\u00fchle'\n[[slot]]\nindex = 0\n"
                                    "'help_file' = '\u00e4\\'\n"
                                    "text = \"\"\"\"\u00fc\u00a0\\\"\\\n  x\u00fc\"\"\"\"\n"
                                    "name = '''\u00f6'\u00f6'''\n");
    EXPECT_EQ(screen.name, "m\u00fchle");
    ASSERT_FALSE(screen.records[0].slots.empty());
    EXPECT_EQ(text_of(screen.records[0].slots[0].text), "\"\xfc\xa0\"x\xfc\"");
    EXPECT_EQ(text_of(screen.records[0].slots[0].name), "\xf6'\xf6");
}

TEST(ScreenSource, KeysOfVeryManyPartsAreRefused) {
    std::string deep;
    for (int part = 0; part < 300000; ++part)
        deep += "a.";
    EXPECT_FALSE(read_screen_source(deep + "a = 1").faults.empty());
}

TEST(Unpack, PackingGivesTheSameBytesWhateverTheRecordsHold) {
    std::mt19937 random(7);
    const auto number = [&random](int low, int high) { return std::uniform_int_distribution(low, high)(random); };
    const auto random_records = [&](int count) {
        std::vector<Slot> records(static_cast<std::size_t>(count));
        for (Slot& slot : records) {
            slot = number(0, 3) == 0 ? gap_slot() : empty_slot();
            auto* const bytes = reinterpret_cast<unsigned char*>(&slot);
            // Few bytes leave texts and small numbers whole, many leave nothing whole.
            for (int changes = number(0, 1) * number(0, 400); changes > 0; --changes)
                bytes[number(0, sizeof slot - 1)] = static_cast<unsigned char>(number(0, 255));
            slot.action = number(-2, 60);
        }
        return records;
    };
    for (int round = 0; round < 30; ++round) {
        Screen screen;
        screen.name = round % 2 == 0 ? "ma.de \"x\"" : "";
        const int slots = number(0, 12), toggles = number(0, 12);
        const bool has_toggle_file = toggles > 0 || number(0, 1) == 1;
        for (ScreenRecords& records : screen.records)
            records = {random_records(slots), random_records(toggles), has_toggle_file};
        const Screen again = screen_of(write_screen_source(screen));
        EXPECT_EQ(again.name, screen.name);
        for (std::size_t i = 0; i < languages.size(); ++i) {
            EXPECT_EQ(slot_file_bytes(again.records[i].slots), slot_file_bytes(screen.records[i].slots));
            EXPECT_EQ(slot_file_bytes(again.records[i].toggles), slot_file_bytes(screen.records[i].toggles));
            EXPECT_EQ(again.records[i].has_toggle_file, has_toggle_file);
        }
    }
}

TEST(SlotBytes, CountMustFitTheFile) {
    const std::string sound = slot_file_bytes({empty_slot(), gap_slot()});
    std::string fault;
    EXPECT_EQ(records_of(sound, fault).size(), 2u);
    EXPECT_EQ(fault, "");
    std::string huge = sound;
    huge[2] = 1;
    for (const std::string& bad : {std::string("\1\0", 2), sound.substr(0, sound.size() - 1), sound + "x", huge}) {
        fault.clear();
        EXPECT_TRUE(records_of(bad, fault).empty());
        EXPECT_NE(fault, "");
    }
}

TEST(Names, EveryNumberComesBackFromItsName) {
    for (const Meaning meaning : {Meaning::colour, Meaning::font, Meaning::action, Meaning::sound, Meaning::buffer,
                                  Meaning::input, Meaning::focus})
        for (int number = -1; number < 1000; ++number) {
            const auto name = name_of_number(meaning, number);
            if (name) {
                EXPECT_EQ(number_of_name(meaning, *name), number) << *name;
            }
        }
    EXPECT_EQ(name_of_number(Meaning::focus, INT32_MAX), std::nullopt);
    EXPECT_EQ(number_of_name(Meaning::colour, "steel_16"), std::nullopt);
    EXPECT_EQ(number_of_name(Meaning::colour, "steel_"), std::nullopt);
}

TEST(Latin1, TextsOfTheTwoCharacterSetsMeet) {
    EXPECT_EQ(to_latin1("Gr\u00fc\u00dfe \u20ac \u2013"), "Gr\xfc\xdf"
                                                          "e \x80 \x96");
    for (const char* bad : {"\u2713", "\xc3", "\xff", "\xf0\x9f\x98\x80", "a\x80"})
        EXPECT_EQ(to_latin1(bad), std::nullopt);
}

} // namespace
} // namespace vcc::kit
