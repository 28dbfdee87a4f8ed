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

TEST(Text, IsPaddedTrimmedAndRenamed) {
    const struct {
        std::string text;
        int length;
        std::string padded;
    } paddings[] = {{"AB", 6, "AB..."}, {"ABCDEFG", 6, "ABCDEFG"}, {"", 1, ""}, {"", 0, ""}, {"", -5, ""}};
    for (auto [text, length, padded] : paddings) {
        pad_text(text, length, '.');
        EXPECT_EQ(text, padded) << length;
    }
    const struct {
        std::string text, right, left;
    } trims[] = {{"A B  ", "A B", "A B  "}, {"   ", "", ""}, {" A\t", " A\t", "A\t"}, {"\t ", "\t", "\t "}};
    for (auto [text, right, left] : trims) {
        EXPECT_EQ(trim_left(text), left);
        EXPECT_EQ(is_blank(text), right.empty());
        EXPECT_EQ(trim_right(text), std::ssize(right));
        EXPECT_EQ(text, right);
    }
    const std::pair<const char*, const char*> names[] = {
        {"vcc.slt", "vcc.x"}, {"a.b.c", "a.b.x"}, {"none", ".x"}, {".slt", ".x"}};
    for (const auto& [name, renamed] : names)
        EXPECT_EQ(replace_extension(name, ".x"), renamed);
}

TEST(Text, ReadsNumbersLikeTheStandardConversionAndClampsThem) {
    for (const auto& [text, number] : {std::pair{"12", 12},
                                       {" \t-7x", -7},
                                       {"+3", 3},
                                       {"", 0},
                                       {"x1", 0},
                                       {"- 1", 0},
                                       {"2147483648", INT_MAX},
                                       {"-2147483648", INT_MIN},
                                       {"-99999999999999999999999", INT_MIN}})
        EXPECT_EQ(to_number(text), number) << text;
}

TEST(Text, FieldsOfRecordsNeedNoTerminator) {
    char field[4] = {'a', 'b', 'c', 'd'};
    EXPECT_EQ(text_of(field), "abcd");
    store_text(field, "wxyz");
    EXPECT_EQ(std::string(field, 4), std::string("wxy\0", 4));
}

TEST(Lines, AreCutAtTheLimitWithoutLosingAnything) {
    const struct {
        std::string_view text;
        std::size_t limit;
        std::vector<std::string_view> lines;
    } cases[] = {
        {"a\r\n\nb", 244, {"a", "", "b"}}, {"abcd\nx", 4, {"abcd", "", "x"}}, // the line feed no longer fits
        {"abc\nx", 4, {"abc", "x"}},       {{"a\0b\nc", 5}, 244, {"a", "c"}}, {"", 244, {}},
    };
    for (const auto& each : cases) {
        LineReader reader(each.text);
        std::vector<std::string_view> lines;
        while (const auto line = reader.next(each.limit))
            lines.push_back(*line);
        EXPECT_EQ(lines, each.lines);
    }
}

TEST(Geometry, RectanglesIncludeTheirCornersAndOnlyWhatFitsIsCentred) {
    constexpr Rect rect{10, 20, 30, 40};
    EXPECT_TRUE(rect.contains(10, 20) && rect.contains(30, 40));
    EXPECT_FALSE(rect.contains(31, 40) || rect.contains(30, 41) || rect.contains(9, 20) || rect.contains(10, 19));

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
    const test::ScratchFolder folder;
    write_log("lost");
    EXPECT_FALSE(std::filesystem::exists("data"));

    std::filesystem::create_directories("data/logfiles");
    module_prefix = "CC: ";
    write_log("first %s");
    module_prefix = "CC ";
    write_log("second\n");
    const std::string stamp = R"(\[\w{3} \w{3} [ \d]\d \d\d:\d\d:\d\d \d{4}\])";
    const std::regex both("CC:  " + stamp + "\nfirst %s\n\nCC  " + stamp + "\nsecond\n\n\n");
    EXPECT_TRUE(std::regex_match(folder.log(), both)) << folder.log();
    EXPECT_EQ(format_text("%d%s", 7, std::string(9000, 'x').c_str()), "7" + std::string(4094, 'x'));
}

TEST(Files, AreReadWholeOrNotAtAll) {
    const test::ScratchFolder folder;
    const std::string bytes("a\0b\r\n", 5);
    folder.write("Data/Text.TXT", bytes);
    EXPECT_EQ(read_file("data\\text.txt"), bytes);
    EXPECT_EQ(read_file("data/text.txt", 5), bytes);
    EXPECT_EQ(read_file("data/text.txt", 4), std::nullopt);
    EXPECT_EQ(read_file("data"), std::nullopt);
    EXPECT_EQ(read_file("missing"), std::nullopt);
}

} // namespace
} // namespace vcc
