#include "core/text.h"
#include "screen/slot_file.h"
#include "screen/status_line.h"
#include "sound/sound.h"
#include "support/screen_world.h"

#include <climits>
#include <cstring>
#include <functional>

namespace vcc::test {
namespace {

std::string file_of(std::int32_t count, std::size_t records) {
    std::string bytes(4 + records * sizeof(Slot), '\0');
    std::memcpy(bytes.data(), &count, 4);
    for (std::size_t i = 0; i < records; ++i) {
        const auto font = static_cast<std::int32_t>(i + 1);
        std::memcpy(bytes.data() + 4 + i * sizeof(Slot) + offsetof(Slot, font), &font, 4);
    }
    return bytes;
}

Slot text_slot(const char* text, int x, int y) {
    Slot slot{};
    slot.fore_colour = 2;
    slot.dest_x = x;
    slot.dest_y = y;
    store_text(slot.text, text);
    return slot;
}

TEST(SlotFile, IsRejectedAtEveryTruncationAndAtImpossibleCounts) {
    const std::string whole = file_of(2, 2);
    ASSERT_EQ(read_slot_file(whole).records.size(), 2u);
    EXPECT_EQ(read_slot_file(whole).records[1].font, 2);
    EXPECT_EQ(read_slot_file(whole + "more").records.size(), 2u);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const SlotFileContents contents = read_slot_file(std::string_view(whole).substr(0, length));
        EXPECT_TRUE(contents.records.empty()) << length;
        EXPECT_EQ(contents.fault.empty(), length < 4) << length;
    }
    EXPECT_EQ(read_slot_file(file_of(200, 200)).records.size(), 200u);
    for (const int count : {201, -1, INT_MAX, INT_MIN})
        EXPECT_TRUE(read_slot_file(file_of(count, 201)).records.empty()) << count;
    EXPECT_TRUE(read_slot_file(file_of(0, 0)).fault.empty());
}

TEST_F(ScreenWorld, SlotSetsAreLoadedWithTheTogglesBesideThem) {
    struct Case {
        const char* name;
        std::string slots, toggles; // "-": no such file
        int sum;
        int slot_count, toggle_count;
        const char* log; ///< what the log must name; empty: nothing is logged
    };
    const Case cases[] = {
        {"both.slt", file_of(3, 3), file_of(2, 2), 5, 3, 2, ""},
        {"a.b.slt", file_of(3, 3), "-", 3, 3, 0, ""},
        {"missing.slt", "-", file_of(2, 2), 3, 0, 2, ""},
        {"none.slt", file_of(0, 0), "-", 0, 0, 0, ""},
        {"short.slt", file_of(3, 2), "-", 0, 0, 0, "short.slt"},
        {"badtgl.slt", file_of(2, 2), file_of(900, 2), 2, 2, 0, "badtgl.tgl"},
    };
    for (const Case& c : cases) {
        const std::string stem = std::string(c.name).substr(0, std::strlen(c.name) - 4);
        if (c.slots != "-")
            folder.write(c.name, c.slots);
        if (c.toggles != "-")
            folder.write(stem + ".tgl", c.toggles);
        folder.write("data/logfiles/veldor_log.txt", "");
        SlotSet set;
        EXPECT_EQ(load_slot_set(c.name, set), c.sum) << c.name;
        EXPECT_EQ(set.slot_count(), c.slot_count) << c.name;
        EXPECT_EQ(set.toggle_count(), c.toggle_count) << c.name;
        EXPECT_EQ(folder.log().find(c.log) != std::string::npos, true) << c.name;
        EXPECT_EQ(folder.log().empty(), *c.log == '\0') << folder.log();
    }
}

TEST_F(ScreenWorld, StatusLineLiesAtTheBottomAndRefusesWhatIsTooLong) {
    place_status_line();
    show_status("lost", "", 4); // no picture yet: dropped
    set_status_target(picture.get());
    show_status("Datei ja!", " Slots nein!", 4);
    EXPECT_TRUE(same(inked(), {7, 561, 7 + 7 * 113, 573})); // font 4: cells of 7 x 12
    EXPECT_EQ(at(8, 562), pixel_of(15));
    EXPECT_EQ(current_font, 0);
    EXPECT_EQ(ink(0, 0, 799, 560), 0);
    const std::string before = bytes();
    wipe();
    show_status(std::string(60, 'a'), std::string(54, 'b'), 4); // 798 pixels
    EXPECT_EQ(inked().x1, 7);
    wipe();
    show_status(std::string(60, 'a'), std::string(55, 'b'), 4); // 805
    EXPECT_TRUE(same(inked(), {16, 561, 16 + 7 * 21, 573}));    // the note alone, on its box
    set_status_target(nullptr);
}

TEST_F(ScreenWorld, TextSlotsStandAtTheirDestinationOnlyWhenBothCoordinatesAreSet) {
    Slot slot = text_slot("H", 30, 40);
    slot.font = 7; // cells of 10 x 16
    slot.column = 3;
    slot.row = 2;
    const auto place = [&](int x, int y) {
        slot.dest_x = x;
        slot.dest_y = y;
        return slot_position(slot);
    };
    EXPECT_EQ(place(30, 40).x, 30);
    EXPECT_EQ(place(30, 40).y, 40);
    EXPECT_EQ(place(0, 50).y, 32);
    EXPECT_EQ(place(50, 0).x, 30);
    EXPECT_EQ(place(INT_MAX, INT_MIN).x, 32767);
    slot.column = INT_MAX;
    slot.row = INT_MIN;
    EXPECT_EQ(place(0, 0).x, 800);
    EXPECT_EQ(place(0, 0).y, 0);
}

TEST_F(ScreenWorld, TextSlotsDrawBoxShadowAndTextByTheirFields) {
    Slot slot = text_slot("HHH", 100, 100);
    const auto drawn = [&](const std::function<void()>& change) {
        wipe();
        change();
        draw_slot(picture.get(), std::span(&slot, 1), 0);
        return inked();
    };
    EXPECT_GT(drawn([] {}).x2, 100);
    EXPECT_EQ(current_font, 0);
    slot.box_height = 20;
    slot.back_colour = 1;
    EXPECT_LT(drawn([] {}).x2, 150); // a width of 0: no box
    EXPECT_TRUE(same(drawn([&] { slot.box_width = 60; }), {100, 100, 160, 120}));
    EXPECT_TRUE(same(drawn([&] { slot.draw_flags[0] = 'n'; }), {0, 0, -1, -1}));
    slot.draw_flags[0] = ' ';
    slot.box_width = 0;
    slot.draw_flags[1] = 's';
    store_text(slot.sound_flags, "12");
    for (const int smooth : {0, 1}) { // index of a colour or value of a pixel
        anti_aliased_text = smooth;
        drawn([] {});
        const std::string all = bytes();
        const std::uint32_t wanted = smooth ? 12u : static_cast<std::uint32_t>(pixel_of(12));
        EXPECT_NE(all.find(std::string(reinterpret_cast<const char*>(&wanted), 4)), std::string::npos) << smooth;
    }
    EXPECT_EQ(text_on_box, 0);
    draw_slot(picture.get(), std::span(&slot, 1), 1);
    draw_slot(picture.get(), std::span(&slot, 1), -1);
}

TEST_F(ScreenWorld, SmoothedTextIsKeptToSlotsThatLieOnCleanBackground) {
    anti_aliased_text = 1;
    const auto shades = [&](const std::function<void(Slot&)>& change) {
        Slot slot = text_slot("gSOS", 100, 100);
        change(slot);
        wipe();
        draw_slot(picture.get(), std::span(&slot, 1), 0);
        int count = 0;
        for (int y = 90; y < 130; ++y)
            for (int x = 90; x < 200; ++x)
                count += at(x, y) != 0 && at(x, y) != pixel_of(2);
        return count;
    };
    EXPECT_GT(shades([](Slot&) {}), 0);
    EXPECT_EQ(shades([](Slot& s) { s.input_mode = 2; }), 0);
    EXPECT_EQ(shades([](Slot& s) { s.draw_flags[2] = 'x'; }), 0);
    EXPECT_EQ(shades([](Slot& s) {
                  s.box_width = s.box_height = 50;
                  s.back_colour = 300;
              }),
              0);
}

TEST_F(ScreenWorld, PictureSlotsCutTheirPictureOutOfABuffer) {
    put_buffer(5, 200, 100, pixel_of(3));
    putpixel(graphic_buffers[5].get(), 12, 8, bitmap_mask_color(graphic_buffers[5].get()));
    Slot slot{};
    slot.graphic = 1;
    slot.buffer = 5;
    slot.src_x = 10;
    slot.src_y = 5;
    slot.box_width = 110;
    slot.box_height = 45;
    slot.dest_x = 50;
    const auto draw = [&] {
        wipe();
        draw_slot(picture.get(), std::span(&slot, 1), 0);
        return inked();
    };
    EXPECT_TRUE(same(draw(), {50, 0, 149, 39}));
    EXPECT_EQ(at(52, 3), 0); // the mask colour is left out
    show_slot_pictures = 0;
    EXPECT_TRUE(same(draw(), {0, 0, -1, -1}));
    show_slot_pictures = 1;
    slot.buffer = 6; // empty
    EXPECT_TRUE(same(draw(), {0, 0, -1, -1}));
}

TEST_F(ScreenWorld, HostileSlotsNeitherOverflowNorLeaveThePicture) {
    put_buffer(5, 200, 100, pixel_of(3));
    for (const int bad : {INT_MIN, INT_MIN + 1, -70000, -1, 0, 1, 255, 70000, INT_MAX})
        for (const int good : {0, 5, 100})
            for (const char* text : {"text", "TEXT-WIN"}) {
                Slot slot = text_slot(text, bad, good ? good : bad);
                for (std::int32_t* field : {&slot.font, &slot.size, &slot.box_width, &slot.box_height, &slot.column,
                                            &slot.row, &slot.src_x, &slot.src_y, &slot.sound, &slot.back_colour})
                    *field = bad;
                slot.buffer = good ? 5 : bad;
                std::memset(slot.sound_flags, '9', sizeof slot.sound_flags); // no terminating zero
                slot.draw_flags[1] = 's';
                for (const int graphic : {0, 1, bad}) {
                    slot.graphic = graphic;
                    SlotSet set{{slot}, {}};
                    std::vector<std::string> edit_texts;
                    const auto places = draw_slot_set(picture.get(), set, edit_texts);
                    EXPECT_GE(places[0].size, 0);
                    EXPECT_LE(places[0].size, 90);
                    EXPECT_LE(edit_texts[0].size(), 254u);
                }
            }
}

TEST_F(ScreenWorld, WholeSetsRecordFieldsAndLetOnlyTheFirstSoundBeHeard) {
    SlotSet set{{text_slot("A", 10, 20), text_slot("B", 0, 0), text_slot("C", 0, 0)}, {}};
    set.slots[1].font = 10; // cells of 14 x 20
    set.slots[1].column = 2;
    set.slots[1].row = 3;
    set.slots[1].size = 12;
    set.slots[1].input_mode = 1;
    set.slots[1].back_colour = 9;
    set.slots[1].sound = 7;
    std::vector<std::string> edit_texts{"left over", "", "", ""};
    sound_on = 0;
    sfx_allowed = 1;
    anti_aliased_text = 1;
    const auto places = draw_slot_set(picture.get(), set, edit_texts);
    EXPECT_EQ(sfx_allowed, 0); // held from the slot with a sound on, and not given back while sound is off
    EXPECT_EQ(full_redraw, 0);
    ASSERT_EQ(places.size(), 3u);
    EXPECT_EQ(places[0].x, 10);
    EXPECT_EQ(places[1].x, 28);
    EXPECT_EQ(places[1].y, 60);
    EXPECT_EQ(places[1].size, 12);
    EXPECT_EQ(places[1].input_mode, 1);
    EXPECT_EQ(places[1].back_colour, 9);
    EXPECT_EQ(edit_texts, (std::vector<std::string>{"", std::string(11, ' '), ""}));
    sound_on = 1;
    build_entry_table(picture.get(), set.slots);
    EXPECT_EQ(sfx_allowed, 1);
}

} // namespace
} // namespace vcc::test
