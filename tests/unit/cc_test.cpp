// Rules of the options screen that need no screen: stepping, depths, themes, texts, retries.
#include "folder_test.h"

#include "cc/manual.h"
#include "cc/option_rows.h"
#include "cc/theme_player.h"
#include "core/installation.h"
#include "settings/settings.h"
#include "sound/sound.h"
#include "text/language.h"
#include "text/screen_texts.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace vcc {
namespace {

TEST(SteppedValue, ComesBackFromOutside) {
    using enum Stepping;
    EXPECT_EQ(stepped_value(3, 2, wrap, true), 0) << "a keyboard layout that is not offered here";
    EXPECT_EQ(stepped_value(0, 0, wrap, false), 0) << "no themes";
    EXPECT_EQ(stepped_value(-2, 2, flip, true), 0);
}

TEST(SettledDepth, MovesOnlyToADepthThatIsOffered) {
    const struct {
        int depth, direction;
        std::array<int, 3> offered;
        int settled;
    } cases[] = {
        {1, 1, {1, 0, 1}, 2}, {1, -1, {1, 0, 1}, 0}, {2, 1, {0, 1, 0}, 1}, {0, -1, {0, 1, 0}, 1}, {1, 1, {1, 0, 0}, 1}};
    for (const auto& c : cases)
        EXPECT_EQ(settled_depth(c.depth, c.direction, c.offered), c.settled) << &c - cases;
}

TEST(Themes, PlayInTurnOrRepeat) {
    const struct {
        int loop, heard, count, next;
    } cases[] = {{0, 2, 11, 2}, {1, 2, 11, 3}, {1, 9, 11, 10}, {1, 10, 11, 0}, {1, -1, 11, 0}, {1, 0, 1, 0}};
    for (const auto& c : cases) {
        theme_loop.fill(c.loop);
        number_of_themes = c.count;
        themes = {c.heard, 1};
        settings.theme.fill(1);
        EXPECT_EQ(theme_order_of(Module::hq).next, c.next) << &c - cases;
        EXPECT_EQ(notice_theme(Module::hq), c.loop == 1) << "a repeated theme changes no setting";
        EXPECT_EQ(settings.theme[hq_module], c.loop == 1 ? c.heard : 1);
    }
}

TEST(Options, HaveATextForEveryValueAndAnExplanation) {
    for (const OptionRow& option : option_rows()) {
        for (int value = 0; value < option.labels.count; ++value)
            EXPECT_NE(value_label(option, value), "") << option.name;
        EXPECT_NE(screen_text(option.explanation), "") << option.name;
    }
}

using Translated = test::FolderTest;

TEST_F(Translated, TextsAndManualFollowTheLanguage) {
    sound_entries[first_theme_entry].name = "March";
    folder.write("texts", "+43\n15 bit\n+100\nMarsch\n+222\nOb sie gehen\n");
    folder.write("docs/Veldor_Manual_DE.pdf", "");
    load_screen_texts("texts");
    EXPECT_EQ(value_label(*find_row(Row::depth), 3), "15 bit");
    EXPECT_EQ(value_label(*find_row(Row::theme), 0), "Marsch");
    EXPECT_EQ(screen_text(*explanation_of(Row::animations)), "Ob sie gehen");
    EXPECT_EQ(screen_text(*explanation_of(Row::animations) + 1), "having Brontar animations in");
    load_screen_texts("nowhere");
    EXPECT_EQ(value_label(*find_row(Row::theme), 0), "March");
    EXPECT_EQ(screen_text(*explanation_of(Row::loop_theme)), "Use this option to switch");
    use_language(2);
    EXPECT_STREQ(manual_file(), path::german_manual);
    use_language(1);
    EXPECT_STREQ(manual_file(), path::manual);
    std::filesystem::remove("docs/Veldor_Manual_DE.pdf");
    use_language(2);
    EXPECT_STREQ(manual_file(), path::manual);
    use_language(1);
}

TEST(OpenWithRetries, WaitsOnlyForFilesThatAreMissing) {
    const struct {
        std::vector<int> results;
        int reported, waited_ms;
    } cases[] = {{{5}, 5, 0}, {{3, 31}, 33, 1000}, {{27, 2, 5}, 33, 3000}, {{2, 2, 2, 2}, 2, 6000}};
    for (const auto& c : cases) {
        std::size_t tries = 0;
        int waited_ms = 0;
        EXPECT_EQ(open_with_retries([&] { return c.results.at(tries++); }, [&](int ms) { waited_ms += ms; }),
                  c.reported);
        EXPECT_EQ(waited_ms, c.waited_ms);
    }
}

} // namespace
} // namespace vcc
