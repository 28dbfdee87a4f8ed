#include "folder_test.h"
#include "media/truetype.h"
#include "text/fonts.h"
#include "text/language.h"
#include "text/screen_texts.h"

#include <filesystem>

namespace vcc {
namespace {

// An absolute name: a test enters another folder, on Windows perhaps on another drive.
const std::string liberation = std::filesystem::absolute("/usr/share/fonts/truetype/liberation/Liberation").string();

class Fonts : public test::FolderTest {
protected:
    void SetUp() override {
        folder.write("fonts/Arial.ttf", folder.read(liberation + "Sans-Regular.ttf"));
        folder.write("fonts/cour.ttf", folder.read(liberation + "Mono-Regular.ttf"));
        set_config_file("fonts.cfg");
        set_config_int("VELDOR_VCC", "font0_height", 30);
        set_config_int("VELDOR_VCC", "font6_space", 3);
        ASSERT_TRUE(load_fonts("fonts"));
        configure_fonts();
    }
    void TearDown() override { release_fonts(); } // Windows removes no folder with an open file in it
};

TEST_F(Fonts, GridsComeFromTheTableAndSizesFromTheSettings) {
    EXPECT_GT(text_width(0, "Veldor"), 60); // measured, at 30 pixels
    EXPECT_EQ(text_width(6, "Veldor"), 48); // one cell per character
    EXPECT_EQ(font_face(6)->text_length("Veldor"), 6 * (7 + 3));
    for (const int n : {2, 3, 4, 5, 7, 8, 9, 10}) // text lies in its cells
        EXPECT_EQ(font_face(n)->text_length("Veldor"), 6 * cell_width(n)) << n;
    for (const auto& [column, x] : {std::pair{5, 40}, {-1, 0}, {5000, 800}})
        EXPECT_EQ(column_x(0, column), x);
    for (const auto& [row, y] : {std::pair{2, 22}, {-7, 0}, {54, 53 * 11}})
        EXPECT_EQ(row_y(0, row), y);
    EXPECT_EQ(cell_height(11), cell_height(4)); // no such font: the fallback's
}

TEST_F(Fonts, SelectionRemembersOneFontAndFallsBackKeepingTheGrid) {
    select_font(0);
    EXPECT_EQ(drawing.previous_font, 10);
    EXPECT_EQ(std::pair(drawing.grid_rows, drawing.grid_columns), std::pair(54, 101));
    for (const int wrong : {11, -1}) {
        select_font(0);
        select_font(wrong);
        EXPECT_EQ(std::pair(drawing.current_font, drawing.grid_rows), std::pair(4, 54));
    }
    { const FontSelection title(10); }
    EXPECT_EQ(drawing.current_font, 4);
}

using Language = test::FolderTest;

TEST_F(Language, TheFirstCharacterChooses) {
    folder.write("old", "+5\nold\n");
    folder.write("tools/language/german/txt/Messages.ger", "+5\nHallo\n");
    for (const auto& [file, prefix, hello, log] :
         {std::tuple("", "english/e_", "old", "Error reading language variables from language.ini"),
          {"old\n", "english/e_", "old", "Error reading message file"}, // a file, but no language
          {"2 German\r\n1", "german/g_", "Hallo", ""}}) {
        empty_log();
        folder.write("tools/language.ini", file);
        load_messages("old");
        load_language();
        EXPECT_EQ(text_window_prefix, std::string("tools/language/") + prefix);
        EXPECT_EQ(message(5), hello);
        EXPECT_TRUE(logged(log)) << log;
    }
    EXPECT_EQ(language, 2);
    EXPECT_EQ(slot_prefix, "tools\\language\\german\\g_");
}

TEST_F(Language, EachMessageNeedsItsIndexLine) {
    folder.write("messages", "before\n# note\n+5\nHello\nWorld\n+-3\nlost\n+ 9\nkept\n+300\nlost\n+6\nlost");
    EXPECT_EQ(load_messages("messages"), 3);
    EXPECT_EQ(message(5), "World");
    EXPECT_EQ(message(9), "kept");
    EXPECT_EQ(message(6), "");
    EXPECT_EQ(message(-1), "");
    EXPECT_EQ(message(300), "");
}

TEST_F(Language, TextsOfTheScreensAreReplacedOneByOne) {
    namespace number = screen_text_number;
    folder.write("tools/language.ini", "2\n");
    folder.write("tools/language/german/txt/screen_texts.ger",
                 "lost\n# note\n+50\nAUS\n+121\nNur Thema %2.2d %s\n+150\n\n+146\nlost\n+-1\nlost\n+51\n" +
                     std::string(120, 'x'));
    load_language();
    EXPECT_EQ(screen_text(50), "AUS");
    EXPECT_EQ(screen_text(51), std::string(screen_text_length, 'x'));
    EXPECT_EQ(screen_text(number::explanations), "");
    EXPECT_EQ(screen_text(number::explanations + 1), "for the currently chosen");
    EXPECT_EQ(numbered_screen_text(number::loop_one, 7), "Nur Thema 07 %s");
    EXPECT_EQ(screen_text(146), "");
    EXPECT_TRUE(is_screen_text(explanation_number(11)));
    EXPECT_FALSE(is_screen_text(explanation_number(100)));
    EXPECT_TRUE(logged("2 numbers name no text of the screens"));
    EXPECT_TRUE(logged("1 texts are cut to 89 characters"));
    std::filesystem::remove("tools/language/german/txt/screen_texts.ger");
    load_language();
    EXPECT_EQ(screen_text(50), "OFF");
    EXPECT_EQ(numbered_screen_text(number::loop_one, 11), "Loop Theme 11");
}

} // namespace
} // namespace vcc
