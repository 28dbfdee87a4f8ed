#include "support/screen_world.h"

#include <climits>

namespace vcc::test {
namespace {

TEST_F(ScreenWorld, PrimitivesTreatAnIndexOutsideTheTableEachInTheirWay) {
    BITMAP* const p = picture.get();
    const int red = makecol(170, 0, 0), fallback = makecol(255, 85, 85);
    struct Case {
        const char* name;
        void (*draw)(BITMAP*, int colour);
        int colour;
        Rect area;
        int pixel; // at the top left corner of the area
    };
    const Case cases[] = {
        {"fill", [](BITMAP* b, int c) { fill_rect(b, 5, 6, 15, 9, c); }, 4, {5, 6, 15, 9}, red},
        {"fill", [](BITMAP* b, int c) { fill_rect(b, 5, 6, 15, 9, c); }, 300, {0, 0, -1, -1}, 0},
        {"fill", [](BITMAP* b, int c) { fill_rect(b, 5, 6, 15, 9, c); }, -1, {0, 0, -1, -1}, 0},
        {"frame", [](BITMAP* b, int c) { frame_rect(b, 5, 6, 15, 9, c); }, 4, {5, 6, 15, 9}, red},
        {"frame", [](BITMAP* b, int c) { frame_rect(b, 5, 6, 15, 9, c); }, 300, {5, 6, 15, 9}, 300},
        {"clear", clear_to_colour, 4, {0, 0, 799, 599}, red},
        {"clear", clear_to_colour, 300, {0, 0, 799, 599}, 300},
        {"across", [](BITMAP* b, int c) { draw_hline(b, 5, 6, 15, c); }, 300, {5, 6, 15, 6}, fallback},
        {"down", [](BITMAP* b, int c) { draw_vline(b, 5, 6, 16, c); }, -1, {5, 6, 5, 16}, fallback},
        {"band", [](BITMAP* b, int c) { draw_hband(b, 5, 100, 15, c, 3, 0, 0); }, 4, {5, 99, 15, 101}, red},
        {"band", [](BITMAP* b, int c) { draw_hband(b, 5, 100, 15, c, 4, 0, 0); }, 4, {5, 98, 15, 101}, red},
        {"band", [](BITMAP* b, int c) { draw_vband(b, 100, 5, 15, c, 3, 0, 0); }, 4, {99, 5, 101, 15}, red},
        {"band of no thickness", [](BITMAP* b, int c) { draw_hband(b, 5, 9, 15, c, 0, 0, 0); }, 4, {0, 0, -1, -1}, 0},
        {"text box", [](BITMAP* b, int c) { fill_text_box(b, 5, 6, 10, c); }, 4, {5, 6, 15, 17}, red}, // font 0: 11
        {"text box without width", [](BITMAP* b, int c) { fill_text_box(b, 5, 6, 0, c); }, 4, {0, 0, -1, -1}, 0},
    };
    for (const Case& c : cases) {
        wipe();
        c.draw(p, c.colour);
        EXPECT_TRUE(same(inked(), c.area)) << c.name << " " << c.colour << ": " << testing::PrintToString(inked());
        EXPECT_EQ(at(c.area.x1, c.area.y1), c.pixel) << c.name << " " << c.colour;
    }
}

TEST_F(ScreenWorld, BandsStepThroughTheColoursAndHostileOnesEnd) {
    draw_hband(picture.get(), 0, 100, 10, 1, 3, 1, 2);
    EXPECT_EQ(at(5, 99), pixel_of(1));
    EXPECT_EQ(at(5, 100), pixel_of(4));
    EXPECT_EQ(at(5, 101), pixel_of(7));
    for (const int n : {INT_MIN, -5, INT_MAX}) {
        draw_hband(picture.get(), n, n, n, n, n, n, n);
        draw_vband(picture.get(), n, n, n, 3, INT_MAX, n, n);
        frame_rect(picture.get(), n, -3, INT_MAX, n, 5);
        fill_text_box(picture.get(), n, n, n, 5);
        draw_text(picture.get(), n, n, "text", 5, false);
    }
}

TEST_F(ScreenWorld, SmoothedTextDrawnTwiceLooksAsIfDrawnOnce) {
    anti_aliased_text = 1;
    put_buffer(text_copy_buffer, 800, 600, makecol(90, 60, 30));
    for (int font = 0; font < font_count; ++font) {
        select_font(font);
        blit(graphic_buffers[24].get(), picture.get(), 0, 0, 0, 0, 800, 600);
        draw_text(picture.get(), 50, 60, "Sage Ox (Wy), |gjpq_ \xC4\xDF", 15, false);
        const std::string once = bytes();
        draw_text(picture.get(), 50, 60, "Sage Ox (Wy), |gjpq_ \xC4\xDF", 15, false);
        EXPECT_TRUE(bytes() == once) << "font " << font;
        full_redraw = 1; // no restore: the edges grow bolder
        draw_text(picture.get(), 50, 60, "Sage Ox (Wy), |gjpq_ \xC4\xDF", 15, false);
        EXPECT_FALSE(bytes() == once) << "font " << font;
        full_redraw = 0;
    }
}

TEST_F(ScreenWorld, TextReachesTheDisplayWhenAskedEvenWithoutAColour) {
    for (const bool update : {false, true}) {
        const StandInDisplay display;
        wipe();
        putpixel(picture.get(), 700, 500, 77);
        draw_text(picture.get(), 10, 10, "text", 256, update);
        draw_shadow_text(picture.get(), 10, 10, "text", -1, 0, update);
        EXPECT_EQ(ink(), 1);
        EXPECT_EQ(display.is_blank(), !update);
    }
}

TEST_F(ScreenWorld, BoxedTextFillsItsWidthAndKeepsHardEdges) {
    anti_aliased_text = 1;
    select_font(4); // cells of 7 x 12
    draw_boxed_text(picture.get(), 20, 30, "ABCDE", 4, 15, false);
    EXPECT_TRUE(same(inked(), {20, 30, 55, 42}));
    for (int y = 30; y <= 42; ++y)
        for (int x = 20; x <= 55; ++x)
            EXPECT_TRUE(at(x, y) == pixel_of(4) || at(x, y) == pixel_of(15)) << x << "," << y;
    EXPECT_EQ(text_on_box, 0);
    EXPECT_EQ(text_cell_width("ABCDE"), 35);
}

} // namespace
} // namespace vcc::test
