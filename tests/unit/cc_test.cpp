// Rules of the options screen that need no screen: stepping, depths, connector lines, texts, retries.
#include "cc/actions.h"
#include "cc/connectors.h"
#include "cc/option_rows.h"
#include "cc/options_screen.h"
#include "settings/settings.h"
#include "sound/sound.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace vcc {
namespace {

TEST(OptionRows, NoTwoShareAButtonOrACode) {
    std::set<int> numbers;
    for (const OptionRow& option : option_rows()) {
        for (int number : {1000 + option.button, option.step_code, option.choose_code})
            EXPECT_TRUE(numbers.insert(number).second) << number;
        const ActionRow *step = find_action(option.step_code), *choose = find_action(option.choose_code);
        ASSERT_TRUE(step && choose) << option.row;
        EXPECT_EQ(step->kind, ActionKind::step);
        EXPECT_EQ(choose->kind, ActionKind::choose);
        EXPECT_TRUE(has_explanation(option.row));
    }
    for (int code : {-1, 0, 35, 36, 39, 49, 52, 997, 999, 2147483647})
        EXPECT_EQ(find_action(code), nullptr) << code;
}

TEST(SteppedValue, GoesRoundAndComesBackFromOutside) {
    using enum Stepping;
    const struct {
        int value, offered;
        Stepping stepping;
        int forward, back;
    } cases[] = {
        {0, 11, wrap, 1, 10}, {10, 11, wrap, 0, 9}, {9, 11, wrap, 10, 8},
        {3, 2, wrap, 0, 2}, // a layout that is not offered here
        {3, 3, wrap, 0, 2}, // 15 bits
        {0, 0, wrap, 0, 0}, // no themes
        {0, 2, flip, 1, 1},   {1, 2, flip, 0, 0},   {-2, 2, flip, 0, 0},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(stepped_value(c.value, c.offered, c.stepping, true), c.forward) << c.value << " of " << c.offered;
        EXPECT_EQ(stepped_value(c.value, c.offered, c.stepping, false), c.back) << c.value << " of " << c.offered;
    }
}

TEST(NeighbourDepth, MovesOnlyToADepthThatIsOffered) {
    const struct {
        int depth, direction;
        std::array<int, 3> offered;
        int moved;
    } cases[] = {{0, 1, {0, 1, 0}, 1},  {1, 1, {0, 0, 1}, 2},  {1, 1, {1, 0, 0}, 1},  {2, 1, {0, 1, 0}, 1},
                 {0, -1, {0, 1, 0}, 1}, {1, -1, {0, 0, 1}, 1}, {1, -1, {1, 0, 0}, 0}, {2, -1, {1, 0, 0}, 2}};
    for (const auto& c : cases)
        EXPECT_EQ(neighbour_depth(c.depth, c.direction, c.offered), c.moved) << c.depth << " by " << c.direction;
}

TEST(Explanations, FitTheirBox) {
    for (int row : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 11, 86})
        for (std::string_view line : explanation_of(row))
            EXPECT_LE(line.size(), 29u) << line;
    EXPECT_FALSE(has_explanation(10));
    EXPECT_EQ(std::ranges::count(explanation_of(row::resolution), std::string_view{}), 9);
    EXPECT_EQ(explanation_of(row::depth)[11], "\"\\data\\configs\\vcc.cfg\".");
}

TEST(ValueLabels, ComeFromTheListOrTheThemes) {
    sound_entries[first_theme_entry + 1].name = "March";
    number_of_themes = 2;
    EXPECT_EQ(offered_values(*find_row(row::theme)), 2);
    EXPECT_EQ(value_label(*find_row(row::theme), 1), "March");
    EXPECT_EQ(value_label(*find_row(row::effects), 10), "Level MAX");
    EXPECT_EQ(value_label(*find_row(row::depth), 3), "15 Bit") << "kept, though it is not offered";
    for (int outside : {-1, 11, 1000})
        EXPECT_EQ(value_label(*find_row(row::theme), outside), "");
}

TEST(OpenWithRetries, WaitsOnlyForFilesThatAreMissing) {
    const struct {
        std::vector<int> results;
        int reported, waited_ms;
    } cases[] = {{{42}, 42, 0},
                 {{31}, 31, 0},
                 {{5}, 5, 0},
                 {{2, 42}, 33, 1000},
                 {{3, 31}, 33, 1000},
                 {{27, 2, 5}, 33, 3000},
                 {{2, 2, 2, 42}, 33, 6000},
                 {{2, 2, 2, 2}, 2, 6000}};
    for (const auto& c : cases) {
        std::size_t tries = 0;
        int waited_ms = 0;
        EXPECT_EQ(open_with_retries([&] { return c.results.at(tries++); }, [&](int ms) { waited_ms += ms; }),
                  c.reported);
        EXPECT_EQ(tries, c.results.size());
        EXPECT_EQ(waited_ms, c.waited_ms);
    }
}

ConnectorLayout layout_of(int group, int button_y, int module, int value) {
    ConnectorLayout at;
    at.selector_y = {105, 133, 161, 189};
    at.sound_y = {105, 133, 161};
    at.display_y = {231, 259, 287, 315};
    at.display_shown = {true, true, true, true};
    at.battle_y = {371, 399, 427, 455};
    for (std::size_t i = 0; i < 11; ++i)
        at.value_y[i] = 105 + 28 * static_cast<int>(i);
    at.junction_x = {165, 462, 440, 440};
    at.junction_y = {133, 245, 273, 413};
    at.module_right = 128;
    at.sound_left = 192;
    at.sound_right = at.group_right = 400;
    at.value_left = 520;
    at.group = group;
    at.button_y = button_y;
    at.module = module;
    at.marked_value = value;
    return at;
}

TEST(Connectors, LeadFromModuleAndRowToTheValue) {
    const struct {
        ConnectorLayout layout;
        std::vector<Band> lit; ///< horizontal, from, to, at, lit
    } cases[] = {
        {layout_of(1, 161, 0, 3),
         {{true, 129, 149, 105, true},
          {false, 105, 133, 149, true},
          {false, 133, 161, 181, true},
          {true, 181, 201, 161, true},
          {true, 149, 182, 133, true},
          {false, 133, 161, 420, true},
          {true, 400, 420, 161, true},
          {true, 420, 462, 133, true},
          {false, 133, 245, 462, true},
          {true, 500, 520, 189, true},
          {false, 245, 189, 500, true},
          {true, 461, 501, 245, true}}},
        {layout_of(3, 371, 1, 0),
         {{true, 500, 520, 105, true},
          {false, 245, 105, 500, true},
          {true, 400, 420, 371, true},
          {false, 371, 413, 420, true},
          {false, 413, 245, 462, true},
          {true, 420, 440, 413, true},
          {true, 440, 462, 413, true},
          {true, 461, 501, 245, true}}},
        {layout_of(0, 0, 0, 99), {}},
    };
    for (const auto& c : cases) {
        std::vector<Band> lit = connector_bands(c.layout);
        std::erase_if(lit, [](const Band& band) { return !band.lit; });
        EXPECT_EQ(lit, c.lit) << "row at " << c.layout.button_y;
    }
    ConnectorLayout hidden = layout_of(1, 161, 0, 3);
    hidden.display_shown[1] = false;
    const auto at_259 = [](const Band& band) { return band.horizontal && band.at == 259; };
    EXPECT_TRUE(std::ranges::any_of(connector_bands(layout_of(1, 161, 0, 3)), at_259));
    EXPECT_FALSE(std::ranges::any_of(connector_bands(hidden), at_259));
}

} // namespace
} // namespace vcc
