// Text windows, their files, and the list of graphic buffers.
#include "screen/buffer_list.h"
#include "screen/text_window.h"
#include "support/screen_world.h"

#include <climits>

namespace vcc::test {
namespace {

TEST(TextWindowFile, AppliesEveryKeyToTheWindowNamed) {
    std::array<TextWindow, text_window_count> windows;
    read_text_windows("+3\nxo2\nyo 3\nxu20\nyu10\n-0\nc1\nf2\nr3\ng4\nb5\nh6\no7\ne8\ns9\nl10\nt11\nw12\nm13\nBay\n",
                      windows);
    const TextWindow& w = windows[3];
    EXPECT_EQ(
        (std::array{w.colour, w.title_colour, w.left, w.top, w.right, w.bottom, w.style, w.red, w.green, w.blue,
                    w.alpha, w.open_sound, w.close_sound, w.shadow, w.grid, w.font, w.pixel_coords, w.pointer_offset}),
        (std::array{1, 2, 2, 3, 20, 10, 0, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}));
    EXPECT_EQ(w.title, "Bay");
}

TEST(TextWindowFile, PassesOverImpossibleNumbers) {
    for (const auto& [text, colour, count] : {std::tuple("c7\n-1\n-2\n", 7, 2), // every "-" line counts
                                              {"c7\n-\n+30\nc8\n-\n", 7, 1},    // ends the file
                                              {"+-1\nc7\n-\n+1\n-\n", 0, 1}}) { // skipped until the next "+"
        std::array<TextWindow, text_window_count> windows;
        EXPECT_EQ(read_text_windows(text, windows), count) << text;
        EXPECT_EQ(windows[0].colour, colour) << text;
    }
}

class Windows : public ScreenWorld {
protected:
    /// Draws window 3 on a black picture.
    Area draw(int kind, int pixels, int colour) {
        window.style = kind;
        window.pixel_coords = pixels;
        window.colour = colour;
        window.font = 7; // cells of 10 x 16
        const int width = pixels ? 1 : 10, height = pixels ? 1 : 16;
        window.left = 100 / width, window.top = 64 / height, window.right = 200 / width, window.bottom = 128 / height;
        wipe();
        draw_text_window(picture.get(), 3);
        return inked();
    }

    TextWindow &window = text_windows[3], &style = text_windows[style_window];
    static constexpr Area exact{100, 64, 200, 128}, one_row_more{100, 64, 200, 129};
};

TEST_F(Windows, FillAndFrameByStyleAndKindOfCoordinates) {
    window.red = 200;
    window.alpha = 128;
    for (const auto& [kind, pixels, colour, area] : {std::tuple(0, 0, 4, one_row_more),
                                                     {0, 0, -1, nothing},
                                                     {1, 0, 4, one_row_more},
                                                     {-1, 0, 4, exact},
                                                     {1, 1, -1, exact}})
        EXPECT_EQ(draw(kind, pixels, colour), area) << kind << " " << pixels << " " << colour;
    EXPECT_NEAR(getr(at(150, 100)), 100, 2); // the last one: half of 200 over black
    draw(-1, 1, 4);
    EXPECT_EQ(count(4), 49 * 31); // every second pixel inside; the number itself is the pixel
    style.title_colour = 14;
    current_text_window = 3;
    draw(0, 1, 4);
    EXPECT_EQ(at(100, 64), pixel_of(14));
}

TEST_F(Windows, GridLinesStandOneSpacingApart) {
    window.grid = 10;
    draw(1, 1, 4);
    EXPECT_EQ(count(pixel_of(4)), 2 * (101 + 65) - 4 + 6 * 99 + 9 * 63 - 6 * 9); // frame and lines
    window.grid = -3;
    draw(1, 1, 4);
    EXPECT_EQ(count(pixel_of(4)), 2 * (101 + 65) - 4);
}

TEST_F(Windows, ShadowsTakeTheirLookFromTheStyleWindow) {
    window.shadow = 5;
    style.title_colour = 0x010203;
    EXPECT_EQ(draw(1, 1, -1), (Area{105, 69, 204, 132}));
    EXPECT_EQ(count(0x03), 5 * 64); // the strip at the right: the low byte alone
    style.style = style.green = style.alpha = 255;
    EXPECT_EQ(draw(1, 1, -1), (Area{105, 69, 205, 133}));
}

TEST_F(Windows, TitlesAreCentredAbove) {
    window.title = "ABCD";
    draw(0, 0, 4);
    EXPECT_EQ(at(129, 50), 0); // columns 13 to 16
    EXPECT_EQ(at(130, 48), pixel_of(4));
    EXPECT_EQ(draw(0, 1, 4).y1, 48);
}

TEST_F(Windows, BackgroundIsRestoredUnderEveryStyleButSolid) {
    put_buffer(21, 800, 600, 77);
    window.background_buffer = 21;
    window.shadow = 6;
    EXPECT_EQ(draw(-1, 1, -1), (Area{100, 64, 205, 133})); // right - left + shadow wide
    EXPECT_EQ(draw(0, 1, -1), nothing);
    window.background_bitmap = graphic_buffers[21].get();
    for (const auto& [pixels, restore, restored] : {std::tuple(1, 1, true), {0, 1, false}, {0, -1, true}}) {
        draw(-1, pixels, 0);
        wipe();
        draw_text_window_from_bitmap(picture.get(), 3, restore);
        EXPECT_EQ(at(151, 101) == 77, restored) << pixels << " " << restore;
    }
}

TEST_F(Windows, ImpossibleNumbersDrawNothing) {
    for (const int number : {-1, text_window_count, INT_MAX}) {
        draw_text_window(picture.get(), number);
        draw_text_window_from_bitmap(picture.get(), number, 1);
    }
    EXPECT_EQ(ink(), 0);
}

TEST_F(ScreenWorld, BufferListsLoadPicturesUntilTheyEndOrFail) {
    save_pcx("a.pcx", BitmapPtr(create_bitmap(6, 4)).get(), nullptr);
    for (const auto& [list, count, buffer] : {std::tuple("+3\n#+5\n*24\na.pcx\n+4\n.\\A.PCX\n", 2, 4),
                                              {"a.pcx\n+25\nnone.pcx\n", 1, 0},
                                              {"a.pcx\n*25\n", 0, 0},
                                              {"+-1\na.pcx\n", 0, text_copy_buffer}}) { // made all the same
        folder.write("list.buf", list);
        release_graphic_buffers();
        EXPECT_EQ(load_graphic_buffers("list.buf"), count) << list;
        EXPECT_TRUE(graphic_buffer(buffer)) << list;
    }
}

static int pointer_x = 0;

TEST_F(ScreenWorld, TheWindowsPointerPlaceIsOnThePicture) {
    MOUSE_DRIVER mouse{};
    mouse.position = [](int x, int) { pointer_x = x; };
    mouse_driver = &mouse;
    TextWindow& window = text_windows[3];
    window.left = 500;
    window.right = 600;
    window.pixel_coords = 1;
    window.pointer_offset = 368;
    draw_pixel_window(picture.get(), 3, false);
    mouse_driver = nullptr;
    EXPECT_EQ(pointer_x, 799);
}

} // namespace
} // namespace vcc::test
