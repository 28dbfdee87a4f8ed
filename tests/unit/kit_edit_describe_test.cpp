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

const nlohmann::json& slot(const Description& description, int index) {
    return *std::ranges::find_if(description.slots, [&](const auto& each) { return each["index"] == index; });
}

TEST(Describe, SaysWhichTableAFieldComesFrom) {
    const Description menu = described("vcc");
    const nlohmann::json& leave = slot(menu, 15);
    EXPECT_EQ(leave["written"]["sound_act"], "slot");
    EXPECT_EQ(leave["written"]["dest_x"], "style button");
    EXPECT_FALSE(leave["written"].contains("fore_colour"));
    EXPECT_EQ(leave["look_written"]["pressed"]["src_x"], "style button");
    EXPECT_EQ(leave["protected"], "slot on which the pointer shows preview 11");
    EXPECT_TRUE(slot(menu, 19)["protected"].is_null());
    EXPECT_EQ(menu.styles[0]["written"]["help_file"], R"({ en = "help/menu_en.hlp", de = "help/menu_de.hlp" })");
    EXPECT_EQ(menu.styles[0]["look_written"]["pressed"]["sound_flags"], "\"n\"");
    EXPECT_EQ(menu.styles[0]["line"], 14);
}

TEST(Describe, TellsEveryRecordOfAGroup) {
    const Description options = described("vcc_options");
    const nlohmann::json& theme = slot(options, 26);
    EXPECT_EQ(theme["line"], slot(options, 22)["line"]);
    EXPECT_EQ(theme["repeat"], nlohmann::json({{"first", 22}, {"count", 3}, {"step", 2}, {"position", 2}}));
    EXPECT_EQ(theme["protected"], "option button");
    EXPECT_FALSE(slot(options, 11)["look_written"].contains("pressed")) << "pressed = false drops that of the style";
}

} // namespace
} // namespace vcc::kit::edit
