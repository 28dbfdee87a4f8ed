// Files of slots, windows and buffers; how boxes, lines, texts, slots, windows and the status line are drawn.
#include "core/scope.h"
#include "screen/buffer_list.h"
#include "screen/draw.h"
#include "screen/draw_text.h"
#include "screen/slot.h"
#include "screen/status_line.h"
#include "screen/text_window.h"
#include "sound/sound.h"
#include "support/screen_world.h"
#include "text/fonts.h"

#include <climits>
#include <cstring>

static int samples_played = 0;
int play_sample(const SAMPLE*, int, int, int, int) {
    return samples_played++;
}

namespace vcc::test {
namespace {

std::string file_of(std::int32_t count, std::size_t records) {
    std::string bytes(4 + records * sizeof(Slot), '\0');
    std::memcpy(bytes.data(), &count, 4);
    return bytes;
}

TEST(SlotFile, IsRejectedAtEveryTruncationAndAtImpossibleCounts) {
    for (const auto& [count, accepted] : {std::pair(200, 200u), {201, 0u}, {-1, 0u}, {INT_MIN, 0u}})
        EXPECT_EQ(read_slot_file(file_of(count, 201)).value_or({}).size(), accepted) << count;
    for (std::size_t length = 0; length < file_of(2, 2).size(); ++length)
        EXPECT_TRUE(read_slot_file(file_of(2, 2).substr(0, length)).value_or({}).empty()) << length;
}

TEST_F(ScreenWorld, DamagedSlotFilesAreLoggedAndTheOtherFileIsLoaded) {
    folder.write("a.slt", file_of(3, 3));
    folder.write("a.tgl", file_of(900, 2));
    folder.write("b.slt", file_of(3, 2));
    folder.write("b.tgl", file_of(2, 2));
    SlotSet set;
    testing::internal::CaptureStdout();
    load_slot_set("a.slt", set);
    EXPECT_NE(testing::internal::GetCapturedStdout().find("Fehler beim allocieren der toggles\n"), std::string::npos);
    EXPECT_EQ(std::pair(set.slot_count(), set.toggle_count()), std::pair(3, 0));
    load_slot_set("b.slt", set);
    EXPECT_EQ(std::pair(set.slot_count(), set.toggle_count()), std::pair(0, 2));
    EXPECT_TRUE(logged("b.slt"));
    folder.write("short.slt", "\1\2");
    load_slot_set("short.slt", set);
    EXPECT_TRUE(logged("short.slt"));
    folder.write("empty.slt", file_of(0, 0));
    std::filesystem::create_directory("empty.tgl");
    load_slot_set("empty.slt", set);
    EXPECT_TRUE(logged("empty.slt: has no records") && logged("empty.tgl: cannot be read")) << folder.log();
    load_slot_set("nowhere.slt", set);
    EXPECT_TRUE(logged("nowhere.slt"));
    EXPECT_FALSE(logged("nowhere.tgl")) << "a set may have none";
}

TEST_F(ScreenWorld, StatusLineLiesAtTheBottomWithHardEdgesAndRefusesWhatIsTooLong) {
    place_status_line();
    show_status("lost", "", 4); // no picture yet
    graphic_buffers[screen_buffer].reset(create_sub_bitmap(picture.get(), 0, 0, 800, 600));
    anti_aliased_text = 1;
    show_status("Datei ja!", " Slots nein!", 4);
    EXPECT_EQ(inked(), (Area{7, 561, 7 + 7 * 113, 573})); // font 4: cells of 7 x 12
    EXPECT_EQ(ink(), count(pixel_of(4)) + count(pixel_of(15)));
    wipe();
    show_status(std::string(60, 'a'), std::string(55, 'b'), 4); // 805 pixels
    EXPECT_EQ(inked(), (Area{16, 561, 16 + 7 * 21, 573}));      // the note alone, on its box
    release_graphic_buffers();
}

TEST_F(ScreenWorld, BoxesLinesAndBandsHaveTheirPlaceAndTheirWayWithUnknownColours) {
    const struct {
        const char* name;
        void (*draw)(BITMAP*);
        Area area;
        int pixel; ///< at its top left corner
    } cases[] = {
        {"box of no colour", [](BITMAP* b) { fill_rect(b, 5, 6, 15, 9, -1); }, nothing, 0},
        {"line", [](BITMAP* b) { draw_hline(b, 5, 6, 15, 256); }, {5, 6, 15, 6}, pixel_of(12)},
        {"band of colour 255", [](BITMAP* b) { draw_hband(b, 5, 6, 15, 255, 1, 0, 0); }, {5, 6, 15, 6}, pixel_of(255)},
        {"band across", [](BITMAP* b) { draw_hband(b, 5, 100, 15, 4, 4, 0, 0); }, {5, 98, 15, 101}, pixel_of(4)},
        {"band down", [](BITMAP* b) { draw_vband(b, 100, 5, 15, 4, 3, 0, 0); }, {99, 5, 101, 15}, pixel_of(4)},
        {"band in steps", [](BITMAP* b) { draw_hband(b, 5, 1, 15, 1, 3, 1, 2); }, {5, 0, 15, 2}, pixel_of(1)},
    };
    for (const auto& c : cases) {
        wipe();
        c.draw(picture.get());
        EXPECT_EQ(inked(), c.area) << c.name;
        EXPECT_EQ(at(c.area.x1, c.area.y1), c.pixel) << c.name;
    }
    EXPECT_EQ(at(5, 2), pixel_of(7)); // of the last one
    for (const int n : {INT_MIN, -5, INT_MAX}) {
        draw_hband(picture.get(), n, n, n, n, n, n, n);
        draw_text(picture.get(), 10, 10, "text", n, false);
        draw_shadow_text(picture.get(), 10, 10, "text", n, 0, false);
    }
}

TEST_F(ScreenWorld, SmoothedTextDrawnTwiceLooksAsIfDrawnOnce) {
    constexpr const char* text = "Sage Ox (Wy), |gjpq \xC4\xDF t_";
    anti_aliased_text = 1;
    put_buffer(text_copy_buffer, 800, 600, 0);
    for (int font = 0; font < font_count; ++font) {
        wipe();
        select_font(font);
        draw_text(picture.get(), 50, 60, text, 15, false);
        const std::vector once(pixels().begin(), pixels().end());
        draw_text(picture.get(), 50, 60, text, 15, false);
        EXPECT_TRUE(std::ranges::equal(pixels(), once)) << "font " << font;
        const SwitchSet whole(drawing.full_redraw, 1); // no restore: the edges grow bolder
        draw_text(picture.get(), 50, 60, text, 15, false);
        EXPECT_FALSE(std::ranges::equal(pixels(), once)) << "font " << font;
    }
}

class Slots : public ScreenWorld {
protected:
    Area drawn(const Slot& record) const {
        wipe();
        draw_slot(picture.get(), std::span(&record, 1), 0);
        return inked();
    }
    Slot slot = make_slot("gSOS", {{&Slot::fore_colour, 2}, {&Slot::dest_x, 100}, {&Slot::dest_y, 100}});
};

TEST_F(Slots, DrawBoxShadowAndTextByTheirFields) {
    for (const int index : {1, -1})
        draw_slot(picture.get(), std::span(&slot, 1), index);
    EXPECT_EQ(ink(), 0);
    slot.draw_flags[1] = 's';
    store_text(slot.sound_flags, "12");
    set_fields(slot, {{&Slot::box_height, 20}, {&Slot::back_colour, 1}});
    for (const int smooth : {0, 1}) { // index of a colour or value of a pixel
        anti_aliased_text = smooth;
        drawn(slot);
        EXPECT_GT(count(smooth ? 12 : pixel_of(12)), 0) << smooth;
        EXPECT_EQ(count(pixel_of(1)), 0); // a width of 0: no box
    }
    slot.box_width = 60;
    EXPECT_EQ(drawn(slot), (Area{100, 100, 160, 120}));
    hide(slot);
    EXPECT_EQ(drawn(slot), nothing);
}

TEST_F(Slots, SmoothTheirTextOnlyOnCleanBackground) {
    anti_aliased_text = 1;
    drawn(slot);
    EXPECT_GT(ink(), count(pixel_of(2)));
    Slot field = slot, skipped = slot, boxed = slot;
    field.input_mode = 2;
    skipped.draw_flags[2] = 'x';
    set_fields(boxed, {{&Slot::box_width, 50}, {&Slot::box_height, 50}, {&Slot::back_colour, 300}});
    for (const Slot& hard : {field, skipped, boxed}) {
        drawn(hard);
        EXPECT_EQ(ink(), count(pixel_of(2)));
    }
}

TEST_F(Slots, CutTheirPictureOutOfABuffer) {
    put_buffer(5, 200, 100, pixel_of(3));
    putpixel(graphic_buffers[5].get(), 12, 8, bitmap_mask_color(graphic_buffers[5].get()));
    slot = make_slot("", {{&Slot::graphic, 1}, {&Slot::buffer, 5}, {&Slot::src_x, 10}, {&Slot::src_y, 5}});
    set_fields(slot, {{&Slot::box_width, 110}, {&Slot::box_height, 45}, {&Slot::dest_x, 50}});
    EXPECT_EQ(drawn(slot), (Area{50, 0, 149, 39}));
    EXPECT_EQ(at(52, 3), 0); // the mask colour is left out
}

TEST_F(Slots, OfWholeSetsRecordTheirPlacesAndOnlyTheFirstSoundIsHeard) {
    slot.sound = 7;
    const Slot field = make_slot("", {{&Slot::font, 10}, {&Slot::column, 2}, {&Slot::row, 3}, {&Slot::size, 1000}});
    sound_on = 1;
    sound_entries[7].sample.reset(create_sample(8, FALSE, 8000, 1));
    draw_slot_set(picture.get(), {{slot, slot}, {}});
    EXPECT_EQ(samples_played, 1);
    sound_entries[7].sample.reset();
    const auto places = draw_slot_set(picture.get(), {{slot, field}, {}});
    EXPECT_EQ((std::array{places[1].x, places[1].y, places[1].size}), (std::array{28, 60, 90})); // cells of 14 x 20
}

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
