#include "core/layout.h"
#include "core/log.h"
#include "platform/truetype.h"
#include "support/allegro_none.h"
#include "text/fonts.h"
#include "text/language.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace vcc {
namespace {

constexpr const char* font_folder = "/usr/share/fonts/truetype/liberation/";

class Fonts : public testing::Test {
protected:
    void SetUp() override {
        test::start_library();
        folder_.write("data/logfiles/here", "");
        folder_.write("fonts/here", "");
        std::filesystem::copy(std::string(font_folder) + "LiberationSans-Regular.ttf", "fonts/Arial.ttf");
        set_config_file("fonts.cfg");
        module_prefix = "CC: ";
    }
    void TearDown() override { release_fonts(); }
    void add_second_font() const {
        std::filesystem::copy(std::string(font_folder) + "LiberationMono-Regular.ttf", "fonts/cour.ttf");
    }
    test::ScratchFolder folder_;
};

// Runs before any font is configured (tests of a suite run in the order of the file).
TEST_F(Fonts, WithoutGridsEverySelectionFallsBack) {
    current_font = 0;
    grid_rows = 77;
    select_font(9);
    EXPECT_EQ(current_font, 4);
    EXPECT_EQ(grid_rows, 77);
    EXPECT_EQ(cell_width(9) + cell_height(9) + column_x(9, 5) + row_y(9, 5) + text_width(9, "text"), 0);
}

TEST_F(Fonts, MissingFontStopsLoadingAndIsNamed) {
    EXPECT_FALSE(load_fonts("VELDOR_VCC", "fonts"));
    EXPECT_TRUE(font_face(1));
    EXPECT_FALSE(font_face(2));
    EXPECT_NE(folder_.log().find("Error in module:VELDOR_VCC while loading font:fonts/cour.ttf"), std::string::npos);
}

TEST_F(Fonts, GridsComeFromTheTableAndSizesFromTheSettings) {
    add_second_font();
    set_config_int("VELDOR_VCC", "font0_height", 30);
    set_config_int("VELDOR_VCC", "font6_space", 3);
    ASSERT_TRUE(load_fonts("VELDOR_VCC", "fonts"));
    configure_fonts("VELDOR_VCC");
    EXPECT_EQ(current_font, 10);
    EXPECT_EQ(grid_rows, 30);
    EXPECT_EQ(grid_columns, 58);
    EXPECT_EQ(row_y(0, 2), 22);
    EXPECT_EQ(column_x(0, 100), 800);
    EXPECT_GT(text_width(0, "Veldor"), 60); // measured, at 30 pixels
    EXPECT_EQ(text_width(6, "Veldor"), 48); // one cell a character
    EXPECT_EQ(font_face(6)->text_length("Veldor"), 6 * (7 + 3));
    for (const int n : {2, 3, 4, 5, 7, 8, 9, 10}) // text lies in its cells
        EXPECT_EQ(font_face(n)->text_length("Veldor"), 6 * cell_width(n)) << n;
}

TEST_F(Fonts, PositionsOutsideTheGridAreClamped) {
    add_second_font();
    ASSERT_TRUE(load_fonts("VELDOR_VCC", "fonts"));
    configure_fonts("VELDOR_VCC");
    EXPECT_EQ(column_x(0, -1), 0);
    EXPECT_EQ(column_x(0, 5000), 800);
    EXPECT_EQ(row_y(0, -7), 0);
    EXPECT_EQ(row_y(0, 54), 53 * 11);
    EXPECT_EQ(cell_height(11), cell_height(4)); // no such font: the fallback's
}

TEST_F(Fonts, SelectionRemembersOneFontAndFallsBackKeepingTheGrid) {
    add_second_font();
    ASSERT_TRUE(load_fonts("VELDOR_VCC", "fonts"));
    configure_fonts("VELDOR_VCC");
    select_font(0);
    EXPECT_EQ(previous_font, 10);
    EXPECT_EQ(grid_rows, 54);
    EXPECT_EQ(grid_columns, 101);
    select_font(0);
    EXPECT_EQ(previous_font, 0);
    for (const int wrong : {11, -1}) {
        select_font(0);
        select_font(wrong);
        EXPECT_EQ(current_font, 4);
        EXPECT_EQ(grid_rows, 54);
    }
    { const FontSelection title(10); }
    EXPECT_EQ(current_font, 4);
}

struct LanguageCase {
    const char* file; // null: none
    int language;
    const char *slots, *text_windows, *hello, *log;
};

TEST(Language, TheFirstCharacterChooses) {
    test::start_library();
    const LanguageCase cases[] = {
        {"2\n", 2, "tools\\language\\german\\g_", "tools/language/german/g_", "Hallo", ""},
        {"1 English\r\n2", 1, "tools\\language\\english\\e_", "tools/language/english/e_", "Hello", ""},
        {"nowhere\n", 1, "tools\\language\\english\\e_", "tools/language/english/e_", "old",
         "Error reading message file"},
        {"", 1, "tools\\language\\english\\e_", "tools/language/english/e_", "old",
         "Error reading language variables from language.ini"},
        {nullptr, 1, "tools\\language\\english\\e_", "tools/language/english/e_", "old", "Error reading language.ini"},
    };
    for (const LanguageCase& each : cases) {
        const test::ScratchFolder folder;
        folder.write("data/logfiles/here", "");
        folder.write("old", "+5\nold\n");
        folder.write("tools/language/english/txt/messages.eng", "+5\nHello\n");
        folder.write("tools/language/german/txt/Messages.ger", "+5\nHallo\n");
        if (each.file)
            folder.write("tools/language.ini", each.file);
        language = 1;
        load_messages("old");
        load_language();
        EXPECT_EQ(language, each.language);
        EXPECT_EQ(slot_prefix, each.slots);
        EXPECT_EQ(text_window_prefix, each.text_windows);
        EXPECT_EQ(message(5), each.hello);
        const std::string log = folder.log();
        EXPECT_EQ(log.empty(), *each.log == '\0') << log;
        EXPECT_NE(log.find(each.log), std::string::npos) << log;
        EXPECT_EQ(log.find("Error reading message file") != std::string::npos, !log.empty()) << log;
    }
}

struct MessageCase {
    std::string file;
    int stored, index;
    std::string text;
};

TEST(Messages, EachNeedsItsIndexLine) {
    test::start_library();
    const MessageCase cases[] = {
        {"# note\n+5\nHello\nWorld\n", 2, 5, "World"},
        {"+300\nlost\n+6\nlost", 0, 6, ""},
        {"before\n+-3\nlost\n+ 9\nkept", 1, 9, "kept"},
        {"+7\n" + std::string(300, 'x') + "\n", 2, 7, std::string(56, 'x')},
        {"+8\nfull\n+8\n\n", 2, 8, ""},
        {"+299\nlast\n+99999999999\nlost\n", 1, 299, "last"},
    };
    for (const MessageCase& each : cases) {
        const test::ScratchFolder folder;
        folder.write("messages", each.file);
        EXPECT_EQ(load_messages("messages"), each.stored) << each.file;
        EXPECT_EQ(message(each.index), each.text) << each.file;
    }
    EXPECT_EQ(message(-1), "");
    EXPECT_EQ(message(300), "");
}

} // namespace
} // namespace vcc
