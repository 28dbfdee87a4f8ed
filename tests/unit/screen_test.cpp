// Slot files; how boxes, lines, texts, slots and the status line are drawn.
#include "core/scope.h"
#include "screen/draw.h"
#include "screen/draw_text.h"
#include "screen/slot.h"
#include "screen/status_line.h"
#include "sound/sound.h"
#include "support/screen_world.h"
#include "support/slots.h"
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

} // namespace
} // namespace vcc::test
