#include "folder_test.h"
#include "platform/truetype.h"
#include "text/fonts.h"
#include "text/language.h"

#include <algorithm>

namespace vcc {
namespace {

class Fonts : public test::FolderTest {
protected:
    Fonts() {
        add_font("Sans", "fonts/Arial.ttf");
        set_config_file("fonts.cfg");
    }
    ~Fonts() override { release_fonts(); }
    void add_font(const std::string& family, const char* file) const {
        folder.write(file, folder.read("/usr/share/fonts/truetype/liberation/Liberation" + family + "-Regular.ttf"));
    }
    void configure() const {
        add_font("Mono", "fonts/cour.ttf");
        ASSERT_TRUE(load_fonts("VELDOR_VCC", "fonts"));
        configure_fonts("VELDOR_VCC");
    }
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
    EXPECT_TRUE(logged("Error in module:VELDOR_VCC while loading font:fonts/cour.ttf"));
}

TEST_F(Fonts, GridsComeFromTheTableAndSizesFromTheSettings) {
    set_config_int("VELDOR_VCC", "font0_height", 30);
    set_config_int("VELDOR_VCC", "font6_space", 3);
    configure();
    EXPECT_EQ(current_font, 10);
    EXPECT_EQ(std::pair(grid_rows, grid_columns), std::pair(30, 58));
    EXPECT_GT(text_width(0, "Veldor"), 60); // measured, at 30 pixels
    EXPECT_EQ(text_width(6, "Veldor"), 48); // one cell a character
    EXPECT_EQ(font_face(6)->text_length("Veldor"), 6 * (7 + 3));
    for (const int n : {2, 3, 4, 5, 7, 8, 9, 10}) // text lies in its cells
        EXPECT_EQ(font_face(n)->text_length("Veldor"), 6 * cell_width(n)) << n;
    for (const auto& [column, x] : {std::pair{100, 800}, {-1, 0}, {5000, 800}})
        EXPECT_EQ(column_x(0, column), x);
    for (const auto& [row, y] : {std::pair{2, 22}, {-7, 0}, {54, 53 * 11}})
        EXPECT_EQ(row_y(0, row), y);
    EXPECT_EQ(cell_height(11), cell_height(4)); // no such font: the fallback's
}

TEST_F(Fonts, SelectionRemembersOneFontAndFallsBackKeepingTheGrid) {
    configure();
    select_font(0);
    EXPECT_EQ(previous_font, 10);
    EXPECT_EQ(std::pair(grid_rows, grid_columns), std::pair(54, 101));
    select_font(0);
    EXPECT_EQ(previous_font, 0);
    for (const int wrong : {11, -1}) {
        select_font(0);
        select_font(wrong);
        EXPECT_EQ(std::pair(current_font, grid_rows), std::pair(4, 54));
    }
    { const FontSelection title(10); }
    EXPECT_EQ(current_font, 4);
}

using Language = test::FolderTest;

TEST_F(Language, TheFirstCharacterChooses) {
    const struct {
        const char* file; // null: none
        int language;
        const char *prefix, *hello, *log;
    } cases[] = {
        {nullptr, 1, "english/e_", "old", "Error reading language.ini"},
        {"", 1, "english/e_", "old", "Error reading language variables from language.ini"},
        {"nowhere\n", 1, "english/e_", "old", "Error reading message file"},
        {"2\n", 2, "german/g_", "Hallo", ""},
        {"1 English\r\n2", 1, "english/e_", "Hello", ""},
    };
    folder.write("old", "+5\nold\n");
    folder.write("tools/language/english/txt/messages.eng", "+5\nHello\n");
    folder.write("tools/language/german/txt/Messages.ger", "+5\nHallo\n");
    for (const auto& each : cases) {
        empty_log();
        if (each.file != nullptr)
            folder.write("tools/language.ini", each.file);
        language = 1;
        load_messages("old");
        load_language();
        EXPECT_EQ(language, each.language);
        EXPECT_EQ(text_window_prefix, std::string("tools/language/") + each.prefix);
        std::replace(text_window_prefix.begin(), text_window_prefix.end(), '/', '\\');
        EXPECT_EQ(slot_prefix, text_window_prefix);
        EXPECT_EQ(message(5), each.hello);
        EXPECT_TRUE(logged(each.log)) << each.log;
        EXPECT_EQ(logged("Error reading message file"), *each.log != '\0') << each.log;
    }
}

TEST_F(Language, EachMessageNeedsItsIndexLine) {
    const struct {
        std::string file;
        int stored, index;
        std::string text;
    } cases[] = {
        {"# note\n+5\nHello\nWorld\n", 2, 5, "World"},
        {"+300\nlost\n+6\nlost", 0, 6, ""},
        {"before\n+-3\nlost\n+ 9\nkept", 1, 9, "kept"},
        {"+7\n" + std::string(300, 'x') + "\n", 2, 7, std::string(56, 'x')},
        {"+8\nfull\n+8\n\n", 2, 8, ""},
        {"+299\nlast\n+99999999999\nlost\n", 1, 299, "last"},
    };
    language = 2;
    for (const auto& each : cases) {
        folder.write("messages", each.file);
        EXPECT_EQ(load_messages("messages"), each.stored) << each.file;
        EXPECT_EQ(message(each.index), each.text) << each.file;
    }
    EXPECT_EQ(message(-1), "");
    EXPECT_EQ(message(300), "");
}

} // namespace
} // namespace vcc
