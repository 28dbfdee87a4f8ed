#include "core/clock.h"
#include "core/files.h"
#include "core/gamepad.h"
#include "core/lines.h"
#include "core/log.h"
#include "core/mouse_buttons.h"
#include "core/text.h"
#include "support/allegro_none.h"

#include <chrono>
#include <climits>
#include <gtest/gtest.h>
#include <regex>
#include <vector>

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace vcc {
namespace {

TEST(Text, ReadsNumbersLikeTheStandardConversionAndClampsThem) {
    for (const auto& [text, number] : {std::pair{" \t-7x", -7}, {"+3", 3}, {"99999999999999999999999", INT_MAX}})
        EXPECT_EQ(to_number(text), number) << text;
}

TEST(Lines, AreCutAtTheLimitWithoutLosingAnything) {
    LineReader reader({"a\r\n\nabcd\r\nabcdef\nx\0y", 20});
    std::vector<std::string_view> lines;
    while (const auto line = reader.next(4))
        lines.push_back(*line);
    EXPECT_EQ(lines, (std::vector<std::string_view>{"a", "", "abcd", "abcd", "ef", "x"}));
}

TEST(Clock, FeedsTheMusicWhileItWaits) {
    using Clock = std::chrono::steady_clock;
    static int fed;
    fed = 0;
    set_idle_task({[] { return true; }, [] { ++fed; }});
    const auto start = Clock::now();
    wait_ms(20);
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(20));
    EXPECT_GT(fed, 1);
    set_idle_task({});
}

/// As the library's thread tells it.
void buttons(int held, int place = 0) {
    mouse_b = held;
    mouse_pos = place;
    mouse_callback(MOUSE_FLAG_LEFT_DOWN);
}

TEST(MouseButtons, EveryPressIsSeenAfterTheMoveThatLedToIt) {
    test::start_library();
    watch_mouse_buttons();
    const auto next = [](int count) {
        std::vector<int> states;
        while (count-- > 0)
            states.push_back(next_mouse_buttons());
        return states;
    };
    for (const int held : {1, 0, 1, 0})
        buttons(held);
    EXPECT_EQ(next(5), (std::vector{1, 0, 1, 0, 0})) << "a double click at once";
    buttons(2, 77);
    mouse_pos = 99;
    EXPECT_TRUE(mouse_button_used());
    EXPECT_EQ(next(3), (std::vector{0, 2, 2})) << "the move first, wherever the pointer is by now";
    buttons(0, 99);
    buttons(1, 99);
    forget_mouse_buttons();
    EXPECT_EQ(next(1), std::vector{1}) << "what is held counts all the same";
    for (int i = 0; i < 1000; ++i)
        buttons(i & 1, 99);
    buttons(0, 99);
    wait_ms(1);
    EXPECT_EQ(next(2), (std::vector{0, 0})) << "clicks during a wait do not count";
    mouse_callback = nullptr;
}

TEST(Log, AppendsWholeEntriesAndNeverMakesItsFolder) {
    const test::ScratchFolder folder;
    write_log("lost");
    EXPECT_FALSE(std::filesystem::exists("data"));
    std::filesystem::create_directories("data/logfiles");
    module_prefix = "CC ";
    write_log("first %s");
    write_log("second\n");
    const std::string head = R"(CC  \[\w{3} \w{3} [ \d]\d \d\d:\d\d:\d\d \d{4}\]\n)";
    const std::regex both(head + "first %s\n\n" + head + "second\n\n\n");
    EXPECT_TRUE(std::regex_match(folder.log(), both)) << folder.log();
#ifndef _WIN32 // pipes
    std::filesystem::remove("data/logfiles/veldor_log.txt");
    ASSERT_EQ(::mkfifo("data/logfiles/veldor_log.txt", 0600), 0);
    write_log("lost"); // does not wait for a reader
#endif
}

TEST(Files, AreReadWholeOrNotAtAll) {
    const test::ScratchFolder folder;
    folder.write("Data/Text.TXT", "a\r\nbc");
    EXPECT_EQ(read_file("data\\text.txt", 5).value_or(""), "a\r\nbc");
    EXPECT_EQ(read_file("data/text.txt", 4).reason(), "cannot be read");
    EXPECT_EQ(read_file("data").reason(), "cannot be read");
    EXPECT_EQ(read_file("text.txt").reason(), "does not exist");
}

using Keys = std::vector<int>;

PadReading pad(unsigned buttons, Point stick = {}, Point hat = {}) {
    return {buttons, {stick, hat}};
}

TEST(Pads, TypeWhatIsPressedOnceAndHeldWaysAgain) {
    constexpr Point rest{30, -30}, down{20, 90}, less{45, 45}, right{127, 0}, left{-128, 0};
    const Keys buttons{KEY_ENTER, KEY_ESC, key_clear_field, KEY_F1, key_step_back, key_step_forward};
    const struct {
        const char* rule;
        PadReading pad;
        std::uint32_t later_ms;
        Keys keys;
    } rows[] = {
        {"held from the start", pad(1, down), 10, {}},
        {"a worn stick does not stand in its middle", pad(0, rest), 10, {}},
        {"buttons", pad(0x3F, rest), 10, buttons},
        {"held", pad(0x7F, rest), 600, {}},
        {"a way", pad(0, down), 10, {KEY_DOWN}},
        {"not again at once", pad(0, down), 390, {}},
        {"again", pad(0, down), 10, {KEY_DOWN}},
        {"and again, sooner", pad(0, less), 150, {KEY_DOWN}},
        {"let go", pad(0, rest), 600, {}},
        {"the latest way goes on", pad(0, right, left), 10, {KEY_RIGHT, KEY_LEFT}},
        {"alone", pad(0, right, left), 400, {KEY_LEFT}},
        {"until it is let go", pad(0, right, rest), 600, {}},
        {"across the middle", pad(0, left), 10, {KEY_LEFT}},
    };
    std::uint32_t now_ms = UINT32_MAX - 300; // the tick wraps
    PadTyping typing;
    for (const auto& row : rows) {
        Keys keys;
        for (const PadKey& key : typing.keys(std::vector{row.pad}, now_ms += row.later_ms))
            keys.push_back(key.library_key);
        EXPECT_EQ(keys, row.keys) << row.rule;
    }
}

} // namespace
} // namespace vcc
