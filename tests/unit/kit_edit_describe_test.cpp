// What an editor is told of a source: who says which field, and where.
#include "vcckit/edit/describe.h"

#include "core/files.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vcc::kit::edit {
namespace {

Description described(const std::string& name) {
    const auto text = read_file(VELDOR_SOURCE_DIR "/game/screens/" + name + ".toml");
    auto description = describe(*text, DocumentKind::screen, {name});
    EXPECT_TRUE(description) << description.reason();
    return std::move(description).value_or({});
}

const RecordDescription& slot(const Description& description, int index) {
    return *std::ranges::find(description.slots, index, &RecordDescription::index);
}

TEST(Describe, SaysWhichTableAFieldComesFrom) {
    const Description menu = described("vcc");
    const RecordDescription& leave = slot(menu, 15);
    EXPECT_EQ(leave.written.at("sound_act"), "slot");
    EXPECT_EQ(leave.written.at("dest_x"), "style button");
    EXPECT_FALSE(leave.written.contains("fore_colour"));
    EXPECT_EQ(leave.looks.at("pressed").at("src_x"), "style button");
    EXPECT_EQ(leave.fixed, "slot on which the pointer shows preview 11");
    EXPECT_EQ(slot(menu, 19).fixed, "");
    EXPECT_EQ(menu.styles.at(0).values.at("help_file"), R"({ en = "help/menu_en.hlp", de = "help/menu_de.hlp" })");
    EXPECT_EQ(menu.styles.at(0).line, 14);
}

TEST(Describe, TellsEveryRecordOfAGroup) {
    const Description options = described("vcc_options");
    const RecordDescription& theme = slot(options, 26);
    ASSERT_TRUE(theme.repeat);
    EXPECT_EQ(theme.line, slot(options, 22).line);
    EXPECT_EQ((std::array{theme.repeat->first, theme.repeat->count, theme.repeat->step, theme.repeat->position}),
              (std::array{22, 3, 2, 2}));
    EXPECT_EQ(theme.fixed, "option button");
    EXPECT_FALSE(slot(options, 11).looks.contains("pressed")) << "pressed = false drops that of the style";
}

} // namespace
} // namespace vcc::kit::edit
