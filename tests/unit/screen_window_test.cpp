// Text windows, their files, and the list of graphic buffers.
#include "screen/buffer_list.h"
#include "support/screen_world.h"

#include <climits>

namespace vcc::test {
namespace {

TEST(TextWindowFile, AppliesEveryKeyToTheWindowNamedLast) {
    std::array<TextWindow, text_window_count> windows;
    EXPECT_EQ(read_text_windows("+3\nxo2\nyo 3\nxu20\nyu10\nxq9\ny\n-0\nc1\nf2\nr3\ng4\nb5\nh6\no7\ne8\ns9\nl10\n"
                                "t11\nw12\nm13\n#c99\nHangar\n+2\nc5\n",
                                windows, nullptr),
              1);
    const TextWindow& w = windows[3];
    EXPECT_EQ(w.title, "Hangar");
    EXPECT_EQ(
        (std::array{w.colour, w.title_colour, w.left, w.top, w.right, w.bottom, w.style, w.red, w.green, w.blue,
                    w.alpha, w.open_sound, w.close_sound, w.shadow, w.grid, w.font, w.pixel_coords, w.pointer_offset}),
        (std::array{1, 2, 2, 3, 20, 10, 0, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}));
    EXPECT_EQ(windows[2].colour, 5);
}

TEST(TextWindowFile, TreatsOddLinesAsWritten) {
    const struct {
        std::string text;
        std::size_t window;
        const char* title;
        int colour, count;
    } cases[] = {
        {"c7\n-1\n-2\n", 0, "start", 7, 2},               // window 0 is current at first, every "-" line counts
        {"+29\nc7\n", 29, "", 7, 0},                      // "+" empties the title
        {"c7\n-\n+30\nc8\n-\n", 0, "start", 7, 1},        // ends the file
        {"+-1\nc7\nTitle\n-\n+1\n-\n", 0, "start", 0, 1}, // skipped until the next "+"
        {"Uno\nDue\n", 0, "Due", 0, 0},
        {"Uno\n\n", 0, "", 0, 0},
        {"Uno\n   \n", 0, "", 0, 0},
        {"test\n", 0, "start", 0, 0}, // the key t
        {"c\n", 0, "start", 0, 0},
        {"#" + std::string(243, 'a') + "c9\n", 0, "start", 9, 0}, // the rest is a line of its own
    };
    for (const auto& c : cases) {
        std::array<TextWindow, text_window_count> windows;
        for (TextWindow& window : windows)
            window.title = "start";
        EXPECT_EQ(read_text_windows(c.text, windows, nullptr), c.count) << c.text;
        EXPECT_EQ(windows[c.window].title, c.title) << c.text;
        EXPECT_EQ(windows[c.window].colour, c.colour) << c.text;
    }
}

class Windows : public ScreenWorld {
protected:
    /// Draws window 3 on a black picture.
    Rect draw(int kind, int pixels, int colour, int grid = 0, int shadow = 0) {
        window.style = kind;
        window.pixel_coords = pixels;
        window.colour = colour;
        window.grid = grid;
        window.shadow = shadow;
        window.font = 7; // cells of 10 x 16
        const int width = pixels ? 1 : 10, height = pixels ? 1 : 16;
        window.left = 100 / width, window.top = 64 / height, window.right = 200 / width, window.bottom = 128 / height;
        wipe();
        draw_text_window(picture.get(), 3);
        return inked();
    }
    int ink_inside() const { return ink(101, 65, 199, 127); }

    TextWindow &window = text_windows[3], &style = text_windows[style_window];
};

TEST_F(Windows, FillAndFrameByStyleAndKindOfCoordinates) {
    window.red = 200;
    window.alpha = 128;
    constexpr Rect nothing{0, 0, -1, -1}, exact{100, 64, 200, 128}, one_row_more{100, 64, 200, 129};
    for (const auto& [kind, pixels, colour, area] : {std::tuple(0, 0, 4, one_row_more),
                                                     {0, 1, 4, exact},
                                                     {0, 0, -1, nothing},
                                                     {0, 1, -1, nothing},
                                                     {1, 0, 4, one_row_more},
                                                     {1, 1, -1, exact},
                                                     {-1, 0, 4, exact},
                                                     {-1, 1, 4, exact}})
        EXPECT_TRUE(same(draw(kind, pixels, colour), area))
            << kind << " " << pixels << " " << colour << ": " << testing::PrintToString(inked());

    draw(1, 1, 0);
    EXPECT_NEAR(getr(at(150, 100)), 100, 2); // half of 200 over black
    draw(-1, 1, 4);
    EXPECT_EQ(at(102, 66), 4); // the number itself is the pixel
    EXPECT_EQ(ink_inside(), 49 * 31);
    style.title_colour = 14;
    current_text_window = 3;
    draw(0, 1, 4);
    EXPECT_EQ(at(100, 64), pixel_of(14));
    EXPECT_EQ(at(101, 65), pixel_of(4));
}

TEST_F(Windows, GridLinesStandOneSpacingApart) {
    window.alpha = 0; // black
    for (const auto& [kind, colour, spacing, pixels] : {std::tuple(1, 4, 10, 6 * 99 + 9 * 63 - 6 * 9),
                                                        {1, 4, 1, 99 * 63},
                                                        {1, 4, -3, 0},
                                                        {0, -1, 10, 0}}) { // solid windows have none
        draw(kind, 1, colour, spacing);
        EXPECT_EQ(ink_inside(), pixels) << kind << " " << spacing;
    }
    draw(1, 1, 4, 10);
    EXPECT_EQ(at(155, 74), pixel_of(4));
    EXPECT_EQ(at(190, 70), pixel_of(4)); // the last line down
}

TEST_F(Windows, ShadowsTakeTheirLookFromTheStyleWindow) {
    style.title_colour = 0x010203;
    draw(1, 1, -1, 0, 5);
    EXPECT_EQ(at(105, 132), 0x010203);
    EXPECT_EQ(at(104, 132), 0);
    EXPECT_EQ(at(200, 69), 0x03); // the strip at the right: the low byte alone
    EXPECT_EQ(at(204, 132), 0x03);
    EXPECT_EQ(inked().x2, 204);
    style.style = 1;
    style.green = style.alpha = 255;
    EXPECT_TRUE(same(draw(1, 1, -1, 0, 5), {105, 69, 205, 133}));
    EXPECT_EQ(at(205, 133), makecol(0, 255, 0));
}

TEST_F(Windows, TitlesAreCentredAboveAndReachTheDisplay) {
    window.title = "ABCD";
    window.title_colour = 15;
    {
        const StandInDisplay display;
        EXPECT_EQ(draw(0, 0, 4).y1, 48);
        EXPECT_EQ(at(129, 50), 0); // columns 13 to 16
        EXPECT_EQ(at(130, 48), pixel_of(4));
        EXPECT_FALSE(display.is_blank());
    }
    EXPECT_EQ(draw(0, 1, 4).y1, 48);
    EXPECT_GT(draw(0, 0, -1).y2, 48);                  // a box of no colour
    EXPECT_TRUE(same(draw(0, 1, -1), {0, 0, -1, -1})); // pixel windows need a colour
    window.top = 0;
    draw_cell_window(picture.get(), 3, false);
    EXPECT_EQ(current_font, 0);
    const StandInDisplay display;
    window.title.clear();
    draw(0, 0, 4);
    EXPECT_TRUE(display.is_blank());
}

TEST_F(Windows, BackgroundIsRestoredUnderEveryStyleButSolid) {
    put_buffer(21, 800, 600, 77);
    window.background_buffer = 21;
    EXPECT_TRUE(same(draw(-1, 1, -1, 0, 6), {100, 64, 205, 133})); // right - left + shadow wide
    EXPECT_TRUE(same(draw(0, 1, -1), {0, 0, -1, -1}));
    window.background_buffer = 9; // empty
    EXPECT_LT(draw(-1, 1, 4).x2, 201);
    window.background_bitmap = graphic_buffers[21].get();
    for (const auto& [pixels, restore, restored] :
         {std::tuple(1, 0, false), {1, 1, true}, {1, -1, true}, {0, 0, false}, {0, 1, false}, {0, -1, true}}) {
        draw(-1, pixels, 0);
        wipe();
        draw_text_window_from_bitmap(picture.get(), 3, restore);
        EXPECT_EQ(at(151, 101) == 77, restored) << pixels << " " << restore;
    }
}

TEST_F(Windows, HostileOnesEndAndStayOnThePicture) {
    put_buffer(21, 800, 600, 77);
    for (const int kind : {-1, 0, 1})
        for (const std::string n : {"-2147483648", "-32000", "0", "1", "2147483647", "99999999999999"}) {
            std::string text = "+3\nTitle\n-" + std::to_string(kind) + "\n";
            for (const char* key : {"f", "c", "xo", "yo", "r", "h", "o", "s", "t", "w", "m"})
                text += key + n + "\n";
            for (const char* edges : {"xu2147483647\nyu2147483647\nl1\n", "xu-9\nyu-9\nl2147483647\n"}) {
                read_text_windows(text + edges, text_windows, nullptr);
                window.background_buffer = 21;
                style = window;
                draw_text_window(picture.get(), 3);
                draw_pixel_window(picture.get(), 3, true);
            }
        }
    wipe();
    for (const int number : {-1, text_window_count, INT_MIN, INT_MAX}) {
        draw_text_window(picture.get(), number);
        draw_text_window_from_bitmap(picture.get(), number, 1);
    }
    EXPECT_EQ(ink(), 0);
}

TEST_F(ScreenWorld, BufferListsLoadPicturesUntilTheyEndOrFail) {
    std::filesystem::create_directories("pics");
    const PALETTE colours{};
    for (const auto& [name, width] : {std::pair("pics/a.pcx", 6), {"pics/b.pcx", 9}}) {
        const BitmapPtr made(create_bitmap(width, 4));
        save_pcx(name, made.get(), colours);
    }
    const struct {
        const char* list;
        int count, buffer, width; // one buffer and the width of its picture; 0: empty
        const char* log;
    } cases[] = {
        {"+3\npics/a.pcx\n+4\npics/b.pcx\n", 2, 4, 9, ""},
        {"pics/a.pcx\npics\\B.PCX\n", 2, 0, 9, ""}, // no "+" line: both into buffer 0
        {"+3\n#+4\n*24\npics/a.pcx\n", 1, 3, 6, ""},
        {"+25\npics/a.pcx\n", 0, 0, 0, ""},
        {"pics/a.pcx\n+25\npics/none.pcx\n", 1, 0, 6, ""},
        {"pics/a.pcx\n*30\n", 0, 0, 6, ""},
        {"*-1\n", 0, 0, 0, ""},
        {"+-1\npics/a.pcx\n", 0, 0, 0, "graphic buffer -1"},
        {"+7\npics/none.pcx\n", 0, 7, 0, "error reading pic_file[7]:=pics/none.pcx"},
        {"pics/a.pcx\n\n", 0, 0, 6, "error reading pic_file[0]:="},
        {"", 0, 24, 800, ""}, // the work bitmaps are there all the same
    };
    for (const auto& c : cases) {
        folder.write("list.buf", c.list);
        folder.write("data/logfiles/veldor_log.txt", "");
        release_graphic_buffers();
        EXPECT_EQ(load_graphic_buffers("list.buf"), c.count) << c.list;
        const BITMAP* const buffer = graphic_buffer(c.buffer);
        EXPECT_EQ(buffer ? buffer->w : 0, c.width) << c.list;
        EXPECT_NE(folder.log().find(c.log), std::string::npos) << c.list;
        EXPECT_EQ(folder.log().empty(), *c.log == '\0') << c.list;
    }
    EXPECT_EQ(load_graphic_buffers("missing.buf"), 0);
}

} // namespace
} // namespace vcc::test
