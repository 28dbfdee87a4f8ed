#include "screen/buffer_list.h"
#include "support/screen_world.h"

#include <climits>

namespace vcc::test {
namespace {

TEST(TextWindowFile, AppliesEveryKeyToTheWindowNamedLast) {
    std::array<TextWindow, text_window_count> windows;
    const int count =
        read_text_windows("+3\nxo2\nyo 3\nxu20\nyu10\nxq9\ny\n-0\nc1\nf2\nr3\ng4\nb5\nh6\no7\ne8\ns9\nl10\n"
                          "t11\nw12\nm13\n#c99\nHangar\n+2\nc5\n",
                          windows, nullptr);
    EXPECT_EQ(count, 1);
    const TextWindow& w = windows[3];
    EXPECT_EQ(w.title, "Hangar");
    const std::array<int, 18> values{w.colour,      w.title_colour, w.left,  w.top,  w.right,        w.bottom,
                                     w.style,       w.red,          w.green, w.blue, w.alpha,        w.open_sound,
                                     w.close_sound, w.shadow,       w.grid,  w.font, w.pixel_coords, w.pointer_offset};
    EXPECT_EQ(values, (std::array<int, 18>{1, 2, 2, 3, 20, 10, 0, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}));
    EXPECT_EQ(windows[2].colour, 5);
}

TEST(TextWindowFile, TreatsOddLinesAsWritten) {
    struct Case {
        const char* text;
        int window;
        const char* title;
        int colour;
        int count;
    };
    const Case cases[] = {
        {"c7\n-1\n-2\n", 0, "start", 7, 2},               // window 0 is current at first, every "-" line counts
        {"+29\nc7\n", 29, "", 7, 0},                      // "+" empties the title
        {"c7\n-\n+30\nc8\n-\n", 0, "start", 7, 1},        // ends the file
        {"+-1\nc7\nTitle\n-\n+1\n-\n", 0, "start", 0, 1}, // skipped until the next "+"
        {"Uno\nDue\n", 0, "Due", 0, 0},
        {"Uno\n\n", 0, "", 0, 0},
        {"Uno\n   \n", 0, "", 0, 0},
        {"test\n", 0, "start", 0, 0}, // the key t
        {"c\n", 0, "start", 0, 0},
    };
    for (const Case& c : cases) {
        std::array<TextWindow, text_window_count> windows;
        for (TextWindow& window : windows)
            window.title = "start";
        EXPECT_EQ(read_text_windows(c.text, windows, nullptr), c.count) << c.text;
        EXPECT_EQ(windows[static_cast<std::size_t>(c.window)].title, c.title) << c.text;
        EXPECT_EQ(windows[static_cast<std::size_t>(c.window)].colour, c.colour) << c.text;
    }
    std::array<TextWindow, text_window_count> windows;
    read_text_windows("#" + std::string(243, 'a') + "c9\n", windows, nullptr); // the rest is a line of its own
    EXPECT_EQ(windows[0].colour, 9);
}

class Windows : public ScreenWorld {
protected:
    /// Draws window 3 on a black picture.
    Rect draw(int style, int pixels, int colour, int grid = 0, int shadow = 0) {
        TextWindow& w = text_windows[3];
        w.style = style;
        w.pixel_coords = pixels;
        w.colour = colour;
        w.grid = grid;
        w.shadow = shadow;
        w.font = 7; // cells of 10 x 16
        if (pixels)
            w.left = 100, w.top = 64, w.right = 200, w.bottom = 128;
        else
            w.left = 10, w.top = 4, w.right = 20, w.bottom = 8;
        wipe();
        draw_text_window(picture.get(), 3);
        return inked();
    }
};

TEST_F(Windows, FillAndFrameByStyleAndKindOfCoordinates) {
    struct Case {
        int style, pixels, colour;
        Rect area;
    };
    text_windows[3].red = 200;
    text_windows[3].alpha = 128;
    for (const Case& c : {Case{0, 0, 4, {100, 64, 200, 129}}, // cells: one row more
                          {0, 1, 4, {100, 64, 200, 128}},
                          {0, 0, -1, {0, 0, -1, -1}},
                          {0, 1, -1, {0, 0, -1, -1}},
                          {1, 0, 4, {100, 64, 200, 129}},
                          {1, 1, -1, {100, 64, 200, 128}},
                          {-1, 0, 4, {100, 64, 200, 128}},
                          {-1, 1, 4, {100, 64, 200, 128}}})
        EXPECT_TRUE(same(draw(c.style, c.pixels, c.colour), c.area))
            << c.style << " " << c.pixels << " " << c.colour << ": " << testing::PrintToString(inked());

    draw(1, 1, 0);
    EXPECT_NEAR(getr(at(150, 100)), 100, 2); // half of 200 over black
    draw(-1, 1, 4);
    EXPECT_EQ(at(102, 66), 4); // the number itself is the pixel
    EXPECT_EQ(ink(101, 65, 199, 127), 49 * 31);
    text_windows[style_window].title_colour = 14;
    current_text_window = 3;
    draw(0, 1, 4);
    EXPECT_EQ(at(100, 64), pixel_of(14));
    EXPECT_EQ(at(101, 65), pixel_of(4));
}

TEST_F(Windows, GridLinesStandOneSpacingApart) {
    text_windows[3].alpha = 0; // black
    draw(1, 1, 4, 10);
    EXPECT_EQ(ink(101, 65, 199, 127), 6 * 99 + 9 * 63 - 6 * 9);
    EXPECT_EQ(at(155, 74), pixel_of(4));
    draw(1, 1, 4, 1);
    EXPECT_EQ(ink(101, 65, 199, 127), 99 * 63);
    draw(1, 1, 4, -3);
    EXPECT_EQ(ink(101, 65, 199, 127), 0);
    draw(0, 1, -1, 10);
    EXPECT_EQ(ink(), 0); // solid windows have none
}

TEST_F(Windows, ShadowsTakeTheirLookFromTheStyleWindow) {
    TextWindow& style = text_windows[style_window];
    style.title_colour = 0x010203;
    draw(1, 1, -1, 0, 5);
    EXPECT_EQ(at(105, 132), 0x010203);
    EXPECT_EQ(at(104, 132), 0);
    EXPECT_EQ(at(200, 69), 0x03); // the strip at the right: the low byte alone
    EXPECT_EQ(at(204, 132), 0x03);
    EXPECT_EQ(inked().x2, 204);
    style.style = 1;
    style.green = 255;
    style.alpha = 255;
    draw(1, 1, -1, 0, 5);
    EXPECT_EQ(at(205, 133), makecol(0, 255, 0));
    EXPECT_TRUE(same(inked(), {105, 69, 205, 133}));
}

TEST_F(Windows, TitlesAreCentredAboveAndReachTheDisplay) {
    text_windows[3].title = "ABCD";
    text_windows[3].title_colour = 15;
    {
        const StandInDisplay display;
        EXPECT_EQ(draw(0, 0, 4).y1, 48);
        EXPECT_EQ(at(129, 50), 0); // columns 13 to 16
        EXPECT_EQ(at(130, 48), pixel_of(4));
        EXPECT_FALSE(display.is_blank());
    }
    EXPECT_EQ(draw(0, 1, 4).y1, 48);
    EXPECT_EQ(draw(0, 0, -1).y1, draw(0, 0, -1).y1); // a box of no colour
    EXPECT_GT(ink(), 0);
    EXPECT_TRUE(same(draw(0, 1, -1), {0, 0, -1, -1})); // pixel windows need a colour
    const StandInDisplay display;
    text_windows[3].title.clear();
    draw(0, 0, 4);
    EXPECT_TRUE(display.is_blank());
    text_windows[3].title = "ABCD";
    wipe();
    text_windows[3].top = 0;
    draw_cell_window(picture.get(), 3, false);
    EXPECT_EQ(at(130, 0), pixel_of(4)); // the last line of the box, or the window itself
    EXPECT_EQ(current_font, 0);
}

TEST_F(Windows, BackgroundIsRestoredUnderEveryStyleButSolid) {
    put_buffer(21, 800, 600, 77);
    text_windows[3].background_buffer = 21;
    EXPECT_TRUE(same(draw(-1, 1, -1, 0, 6), {100, 64, 205, 133})); // right - left + shadow wide
    EXPECT_TRUE(same(draw(0, 1, -1), {0, 0, -1, -1}));
    text_windows[3].background_buffer = 9; // empty
    EXPECT_LT(draw(-1, 1, 4).x2, 201);
    struct Case {
        int pixels, restore;
        bool restored;
    };
    text_windows[3].background_bitmap = graphic_buffers[21].get();
    for (const Case& c :
         {Case{1, 0, false}, {1, 1, true}, {1, -1, true}, {0, 0, false}, {0, 1, false}, {0, -1, true}}) {
        draw(-1, c.pixels, 0);
        wipe();
        draw_text_window_from_bitmap(picture.get(), 3, c.restore);
        EXPECT_EQ(at(151, 101) == 77, c.restored) << c.pixels << " " << c.restore;
    }
}

TEST_F(Windows, HostileWindowsEndAndStayOnThePicture) {
    put_buffer(21, 800, 600, 77);
    for (const int style : {-1, 0, 1})
        for (const std::string n : {"-2147483648", "-32000", "0", "1", "2147483647", "99999999999999"}) {
            std::string text = "+3\nTitle\n-" + std::to_string(style) + "\n";
            for (const char* key : {"f", "c", "xo", "yo", "r", "h", "o", "s", "t", "w", "m"})
                text += key + n + "\n";
            for (const char* edges : {"xu2147483647\nyu2147483647\nl1\n", "xu-9\nyu-9\nl2147483647\n"}) {
                read_text_windows(text + edges, text_windows, nullptr);
                text_windows[3].background_buffer = 21;
                text_windows[style_window] = text_windows[3];
                draw_text_window(picture.get(), 3);
                draw_pixel_window(picture.get(), 3, true);
            }
        }
    for (const int number : {-1, text_window_count, INT_MIN, INT_MAX}) {
        wipe();
        draw_text_window(picture.get(), number);
        draw_text_window_from_bitmap(picture.get(), number, 1);
        EXPECT_EQ(ink(), 0);
    }
}

TEST_F(ScreenWorld, BufferListsLoadPicturesUntilTheyEndOrFail) {
    const BitmapPtr small(create_bitmap(6, 4)), wide(create_bitmap(9, 4));
    clear_to_color(small.get(), makecol(255, 0, 0));
    clear_to_color(wide.get(), makecol(0, 0, 255));
    PALETTE colours{};
    std::filesystem::create_directories("pics");
    save_pcx("pics/a.pcx", small.get(), colours);
    save_pcx("pics/b.pcx", wide.get(), colours);
    struct Case {
        const char* list;
        int count;
        int buffer, width; // one buffer and the width of its picture; 0: empty
        const char* log;
    };
    const Case cases[] = {
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
    for (const Case& c : cases) {
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
