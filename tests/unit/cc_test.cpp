// Rules of the options screen that need no screen: stepping, depths, connector lines, texts, retries.
#include "cc/actions.h"
#include "cc/connectors.h"
#include "cc/option_rows.h"
#include "cc/options_screen.h"
#include "core/log.h"
#include "settings/settings.h"
#include "sound/sound.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace vcc {
namespace {

TEST(OptionRows, NoTwoShareAButtonOrACode) {
    std::set<int> buttons, codes;
    for (const OptionRow& option : option_rows()) {
        EXPECT_TRUE(buttons.insert(option.button).second) << option.row;
        for (int code : {option.step_code, option.choose_code}) {
            EXPECT_TRUE(codes.insert(code).second) << code;
            ASSERT_NE(find_action(code), nullptr) << code;
        }
        EXPECT_EQ(find_action(option.step_code)->kind, ActionKind::step);
        EXPECT_EQ(find_action(option.choose_code)->kind, ActionKind::choose);
        EXPECT_TRUE(has_explanation(option.row));
    }
}

TEST(OptionRows, CodesWithoutAMeaningHaveNoAction) {
    for (int code : {-1, 0, 35, 36, 39, 49, 52, 997, 999, 2147483647})
        EXPECT_EQ(find_action(code), nullptr) << code;
}

TEST(SteppedValue, GoesRoundAndComesBackFromOutside) {
    struct Case {
        int value, offered;
        Stepping stepping;
        int forward, back;
    };
    constexpr Case cases[] = {
        {0, 11, Stepping::wrap, 1, 10}, {10, 11, Stepping::wrap, 0, 9}, {9, 11, Stepping::wrap, 10, 8},
        {3, 2, Stepping::wrap, 0, 2}, // a layout that is not offered here
        {3, 3, Stepping::wrap, 0, 2}, // 15 bits
        {0, 0, Stepping::wrap, 0, 0}, // no themes
        {0, 2, Stepping::flip, 1, 1},   {1, 2, Stepping::flip, 0, 0},   {-2, 2, Stepping::flip, 0, 0},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(stepped_value(c.value, c.offered, c.stepping, true), c.forward) << c.value << " of " << c.offered;
        EXPECT_EQ(stepped_value(c.value, c.offered, c.stepping, false), c.back) << c.value << " of " << c.offered;
    }
}

TEST(NeighbourDepth, MovesOnlyToADepthThatIsOffered) {
    struct Case {
        int depth, direction;
        std::array<int, 3> offered;
        int moved;
    };
    constexpr Case cases[] = {
        {0, 1, {0, 1, 0}, 1},  {1, 1, {0, 0, 1}, 2},  {1, 1, {1, 0, 0}, 1},  {2, 1, {0, 1, 0}, 1},
        {0, -1, {0, 1, 0}, 1}, {1, -1, {0, 0, 1}, 1}, {1, -1, {1, 0, 0}, 0}, {2, -1, {1, 0, 0}, 2},
    };
    for (const Case& c : cases)
        EXPECT_EQ(neighbour_depth(c.depth, c.direction, c.offered), c.moved) << c.depth << " by " << c.direction;
}

TEST(Explanations, FitTheirBox) {
    constexpr std::size_t box_columns = 29;
    for (int row : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 11, 86})
        for (std::string_view line : explanation_of(row))
            EXPECT_LE(line.size(), box_columns) << line;
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
    struct Case {
        std::vector<int> results;
        int reported, waited_ms;
    };
    const Case cases[] = {
        {{42}, 42, 0},
        {{31}, 31, 0},
        {{5}, 5, 0},
        {{2, 42}, 33, 1000},
        {{3, 31}, 33, 1000},
        {{27, 2, 5}, 33, 3000},
        {{2, 2, 2, 42}, 33, 6000},
        {{2, 2, 2, 2}, 2, 6000},
    };
    for (const Case& c : cases) {
        std::size_t tries = 0;
        int waited_ms = 0;
        EXPECT_EQ(open_with_retries([&] { return c.results.at(tries++); }, [&](int ms) { waited_ms += ms; }),
                  c.reported);
        EXPECT_EQ(tries, c.results.size());
        EXPECT_EQ(waited_ms, c.waited_ms);
    }
}

ConnectorLayout built_in_layout() {
    ConnectorLayout at;
    at.selector_y = {105, 133, 161, 189};
    at.sound_y = {105, 133, 161};
    at.display_y = {231, 259, 287, 315};
    at.display_shown = {true, true, true, true};
    at.battle_y = {371, 399, 427, 455};
    for (int i = 0; i < 11; ++i)
        at.value_y[static_cast<std::size_t>(i)] = 105 + 28 * i;
    at.junction_x = {165, 462, 440, 440};
    at.junction_y = {133, 245, 273, 413};
    at.module_right = 128;
    at.sound_left = 192;
    at.sound_right = 400;
    at.group_right = 400;
    at.value_left = 520;
    return at;
}

struct Dots {
    std::set<std::pair<int, int>> lit;

    explicit Dots(const std::vector<Band>& bands) {
        for (const Band& band : bands)
            for (int i = std::min(band.from, band.to); i <= std::max(band.from, band.to); ++i) {
                const auto dot = band.horizontal ? std::pair(i, band.at) : std::pair(band.at, i);
                if (band.lit) // later bands lie over earlier ones, bands are three pixels wide
                    for (int d = -2; d <= 2; ++d)
                        lit.insert(band.horizontal ? std::pair(dot.first, dot.second + d)
                                                   : std::pair(dot.first + d, dot.second));
            }
    }
    /// Whether lit dots lead from one place to the other.
    bool joined(std::pair<int, int> from, std::pair<int, int> to) const {
        if (!lit.contains(from))
            return false;
        std::set<std::pair<int, int>> seen{from};
        std::vector<std::pair<int, int>> open{from};
        while (!open.empty()) {
            const auto [x, y] = open.back();
            open.pop_back();
            for (const auto& next :
                 {std::pair(x + 1, y), std::pair(x - 1, y), std::pair(x, y + 1), std::pair(x, y - 1)})
                if (lit.contains(next) && seen.insert(next).second)
                    open.push_back(next);
        }
        return seen.contains(to);
    }
};

TEST(Connectors, JoinModuleRowAndValue) {
    struct Case {
        int group, button_y;
        std::pair<int, int> start; ///< where the lit path leaves the module or the row's button
    };
    const Case cases[] = {{1, 105, {130, 161}}, {1, 133, {130, 161}}, {1, 161, {130, 161}}, {2, 231, {401, 231}},
                          {2, 315, {401, 315}}, {3, 371, {401, 371}}, {3, 455, {401, 455}}};
    for (const Case& c : cases)
        for (int value : {0, 5, 10}) {
            ConnectorLayout at = built_in_layout();
            at.group = c.group;
            at.button_y = c.button_y;
            at.module = 2;
            at.marked_value = value;
            const Dots dots(connector_bands(at));
            const std::string where = format_text("group %d row at %d value %d", c.group, c.button_y, value);
            const std::pair<int, int> entry{519, 105 + 28 * value};
            if (c.group == 1) { // the path runs through the row's button
                EXPECT_TRUE(dots.joined(c.start, {195, c.button_y})) << where;
                EXPECT_TRUE(dots.joined({402, c.button_y}, entry)) << where;
            } else {
                EXPECT_TRUE(dots.joined(c.start, entry)) << where;
            }
        }
}

TEST(Connectors, NothingIsLitWithoutARow) {
    ConnectorLayout at = built_in_layout();
    at.marked_value = 99;
    EXPECT_TRUE(Dots(connector_bands(at)).lit.empty());
}

TEST(Connectors, FollowTheGivenPlaces) {
    ConnectorLayout at = built_in_layout();
    at.group = 1;
    at.button_y = 161;
    at.module = 0;
    at.marked_value = 3;
    const std::vector<Band> bands = connector_bands(at);
    const auto has = [&](const Band& band) { return std::ranges::find(bands, band) != bands.end(); };
    EXPECT_TRUE(has({true, 129, 149, 105, true}));
    EXPECT_TRUE(has({false, 105, 133, 149, true}));
    EXPECT_TRUE(has({true, 149, 182, 133, true}));
    EXPECT_TRUE(has({false, 133, 161, 181, true}));
    EXPECT_TRUE(has({true, 181, 201, 161, true}));
    EXPECT_TRUE(has({true, 400, 420, 161, true}));
    EXPECT_TRUE(has({true, 420, 462, 133, true}));
    EXPECT_TRUE(has({false, 133, 245, 462, true}));
    EXPECT_TRUE(has({true, 461, 501, 245, true}));
    EXPECT_TRUE(has({false, 245, 189, 500, true}));
    EXPECT_TRUE(has({true, 500, 520, 189, true}));
    EXPECT_TRUE(has({false, 231, 273, 420, false})) << "the other groups stay dark";
    at.display_shown[1] = false;
    EXPECT_FALSE(std::ranges::any_of(connector_bands(at), [](const Band& b) { return b.horizontal && b.at == 259; }));
}

} // namespace
} // namespace vcc
