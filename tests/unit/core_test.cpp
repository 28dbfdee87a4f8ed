#include "core/clock.h"
#include "core/files.h"
#include "core/geometry.h"
#include "core/lines.h"
#include "core/log.h"
#include "core/text.h"
#include "support/allegro_none.h"

#include <climits>
#include <gtest/gtest.h>
#include <regex>
#include <vector>

namespace vcc {
namespace {

TEST(Text, PadsUpToTheBufferAndNeverShortens) {
    struct Case {
        std::string text;
        int length;
        std::string padded;
    };
    for (const Case& c : {Case{"AB", 6, "AB..."}, {"ABCDEFG", 6, "ABCDEFG"}, {"", 1, ""}, {"", 0, ""}, {"", -5, ""}}) {
        std::string text = c.text;
        pad_text(text, c.length, '.');
        EXPECT_EQ(text, c.padded) << c.text << " to " << c.length;
    }
}

TEST(Text, TrimsBlanksOnly) {
    struct Case {
        std::string text, right, left;
    };
    for (const Case& c :
         {Case{"A B  ", "A B", "A B  "}, {"   ", "", ""}, {" A\t", " A\t", "A\t"}, {"\t ", "\t", "\t "}}) {
        std::string text = c.text;
        EXPECT_EQ(trim_right(text), static_cast<int>(c.right.size()));
        EXPECT_EQ(text, c.right);
        EXPECT_EQ(trim_left(c.text), c.left);
        EXPECT_EQ(is_blank(c.text), c.right.empty());
    }
}

TEST(Text, ReplacesTheExtensionAfterTheLastDotButNotAtTheBeginning) {
    EXPECT_EQ(replace_extension("vcc.slt", ".tgl"), "vcc.tgl");
    EXPECT_EQ(replace_extension("a.b.c", ".x"), "a.b.x");
    EXPECT_EQ(replace_extension("noext", ".tgl"), ".tgl");
    EXPECT_EQ(replace_extension(".slt", ".tgl"), ".tgl");
}

TEST(Text, ReadsNumbersLikeTheStandardConversionAndClampsThem) {
    const std::pair<const char*, int> cases[] = {{"12", 12},
                                                 {" \t-7x", -7},
                                                 {"+3", 3},
                                                 {"", 0},
                                                 {"x1", 0},
                                                 {"- 1", 0},
                                                 {"2147483648", INT_MAX},
                                                 {"-2147483648", INT_MIN},
                                                 {"-99999999999999999999999", INT_MIN},
                                                 {"99999999999999999999999", INT_MAX}};
    for (const auto& [text, number] : cases)
        EXPECT_EQ(to_number(text), number) << text;
}

TEST(Text, FieldsOfRecordsNeedNoTerminator) {
    char field[4] = {'a', 'b', 'c', 'd'};
    EXPECT_EQ(text_of(field), "abcd");
    store_text(field, "wxyz");
    EXPECT_EQ(std::string(field, 4), std::string("wxy\0", 4));
}

std::vector<std::string> lines_of(std::string_view text, std::size_t limit) {
    LineReader reader(text);
    std::vector<std::string> lines;
    while (const auto line = reader.next(limit))
        lines.emplace_back(*line);
    return lines;
}

TEST(Lines, AreCutAtTheLimitWithoutLosingAnything) {
    using Lines = std::vector<std::string>;
    EXPECT_EQ(lines_of("a\r\n\nb", 244), (Lines{"a", "", "b"}));
    EXPECT_EQ(lines_of("abcd\nx", 4), (Lines{"abcd", "", "x"})); // the line feed no longer fits
    EXPECT_EQ(lines_of("abc\nx", 4), (Lines{"abc", "x"}));
    EXPECT_EQ(lines_of(std::string_view("a\0b\nc", 5), 244), (Lines{"a", "c"}));
    EXPECT_EQ(lines_of("", 244), Lines{});
}

TEST(Geometry, RectanglesIncludeTheirCorners) {
    constexpr Rect rect{10, 20, 30, 40};
    EXPECT_TRUE(rect.contains(10, 20) && rect.contains(30, 40));
    EXPECT_FALSE(rect.contains(31, 40) || rect.contains(30, 41) || rect.contains(9, 20) || rect.contains(10, 19));
}

TEST(Geometry, CentresOnlyWhatFits) {
    int x = -1, y = -1;
    centre_in(x, y, 800, 600, 1024, 100);
    EXPECT_EQ(std::pair(x, y), std::pair(-1, -1));
    centre_in(x, y, 800, 600, 640, 601);
    EXPECT_EQ(std::pair(x, y), std::pair(80, -1));
    centre_in(x, y, 800, 600, 640, 480);
    EXPECT_EQ(std::pair(x, y), std::pair(80, 60));
}

TEST(Clock, WaitsBusilyWhileMusicWantsToBeFedAlsoWhenTheCounterWraps) {
    static int runs = 0;
    set_idle_task({[] { return true; },
                   [] {
                       ++runs;
                       on_tick();
                   }});
    ms_counter = UINT32_MAX - 4;
    wait_ms(0);
    EXPECT_EQ(runs, 0);
    wait_ms(20);
    EXPECT_EQ(runs, 4);
    EXPECT_EQ(ms_counter.load(), 15U);
    set_idle_task({});
}

TEST(Log, AppendsWholeEntriesAndNeverMakesItsFolder) {
    test::ScratchFolder folder;
    write_log("lost");
    EXPECT_FALSE(std::filesystem::exists("data"));

    std::filesystem::create_directories("data/logfiles");
    module_prefix = "CC: ";
    write_log("first %s");
    module_prefix = "CC ";
    write_log("second\n");
    const std::string stamp = R"(\[\w{3} \w{3} [ \d]\d \d\d:\d\d:\d\d \d{4}\])";
    EXPECT_TRUE(
        std::regex_match(folder.log(), std::regex("CC:  " + stamp + "\nfirst %s\n\nCC  " + stamp + "\nsecond\n\n\n")))
        << folder.log();
}

TEST(Log, FormatsTextsOfAnyLength) {
    EXPECT_EQ(format_text("%s %d", "nr", 7), "nr 7");
    EXPECT_EQ(format_text("%s", std::string(9000, 'x').c_str()).size(), 4095U);
}

TEST(Files, AreReadWholeOrNotAtAll) {
    test::ScratchFolder folder;
    folder.write("Data/Text.TXT", std::string_view("a\0b\r\n", 5));
    EXPECT_EQ(read_file("data\\text.txt"), std::string("a\0b\r\n", 5));
    EXPECT_EQ(read_file("data/text.txt", 5).value_or("").size(), 5U);
    EXPECT_EQ(read_file("data/text.txt", 4), std::nullopt);
    EXPECT_EQ(read_file("data"), std::nullopt);
    EXPECT_EQ(read_file("missing"), std::nullopt);
}

} // namespace
} // namespace vcc
