// Slot files, and how slots and the status line are drawn.
#include "screen/slot_file.h"
#include "screen/status_line.h"
#include "sound/sound.h"
#include "support/screen_world.h"
#include "support/slots.h"

#include <climits>
#include <cstring>

namespace vcc::test {
namespace {

constexpr Rect nothing{0, 0, -1, -1};

std::string file_of(std::int32_t count, std::size_t records) {
    std::string bytes(4 + records * sizeof(Slot), '\0');
    std::memcpy(bytes.data(), &count, 4);
    for (std::size_t i = 0; i < records; ++i)
        bytes[4 + i * sizeof(Slot) + offsetof(Slot, font)] = static_cast<char>(i + 1);
    return bytes;
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
    const struct {
        const char* name;
        std::string slots, toggles; // "-": no such file
        int sum, slot_count, toggle_count;
        const char* log; ///< what the log must name; empty: nothing is logged
    } cases[] = {
        {"both", file_of(3, 3), file_of(2, 2), 5, 3, 2, ""},
        {"a.b", file_of(3, 3), "-", 3, 3, 0, ""},
        {"missing", "-", file_of(2, 2), 3, 0, 2, ""},
        {"none", file_of(0, 0), "-", 0, 0, 0, ""},
        {"short", file_of(3, 2), "-", 0, 0, 0, "short.slt"},
        {"badtgl", file_of(2, 2), file_of(900, 2), 2, 2, 0, "badtgl.tgl"},
    };
    for (const auto& c : cases) {
        const std::string stem = c.name;
        if (c.slots != "-")
            folder.write(stem + ".slt", c.slots);
        if (c.toggles != "-")
            folder.write(stem + ".tgl", c.toggles);
        folder.write("data/logfiles/veldor_log.txt", "");
        SlotSet set;
        EXPECT_EQ(load_slot_set(stem + ".slt", set), c.sum) << stem;
        EXPECT_EQ(set.slot_count(), c.slot_count) << stem;
        EXPECT_EQ(set.toggle_count(), c.toggle_count) << stem;
        EXPECT_NE(folder.log().find(c.log), std::string::npos) << stem;
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
    wipe();
    show_status(std::string(60, 'a'), std::string(54, 'b'), 4); // 798 pixels
    EXPECT_EQ(inked().x1, 7);
    wipe();
    show_status(std::string(60, 'a'), std::string(55, 'b'), 4); // 805
    EXPECT_TRUE(same(inked(), {16, 561, 16 + 7 * 21, 573}));    // the note alone, on its box
    set_status_target(nullptr);
}

class Slots : public ScreenWorld {
protected:
    Rect drawn(const Slot& slot) {
        wipe();
        draw_slot(picture.get(), std::span(&slot, 1), 0);
        return inked();
    }
    /// Pixels that are neither black nor of a colour.
    int shades(int colour) const {
        int count = 0;
        for (int y = 90; y < 130; ++y)
            for (int x = 90; x < 200; ++x)
                count += at(x, y) != 0 && at(x, y) != pixel_of(colour);
        return count;
    }
};

TEST_F(Slots, DrawBoxShadowAndTextByTheirFields) {
    Slot slot = make_slot("HHH", {{&Slot::fore_colour, 2}, {&Slot::dest_x, 100}, {&Slot::dest_y, 100}});
    EXPECT_GT(drawn(slot).x2, 100);
    EXPECT_EQ(current_font, 0);
    set_fields(slot, {{&Slot::box_height, 20}, {&Slot::back_colour, 1}});
    EXPECT_LT(drawn(slot).x2, 150); // a width of 0: no box
    slot.box_width = 60;
    EXPECT_TRUE(same(drawn(slot), {100, 100, 160, 120}));
    hide(slot);
    EXPECT_TRUE(same(drawn(slot), nothing));

    show(slot);
    slot.box_width = 0;
    slot.draw_flags[1] = 's';
    store_text(slot.sound_flags, "12");
    for (const int smooth : {0, 1}) { // index of a colour or value of a pixel
        anti_aliased_text = smooth;
        drawn(slot);
        const int shadow = smooth ? 12 : pixel_of(12);
        EXPECT_NE(bytes().find(std::string(reinterpret_cast<const char*>(&shadow), 4)), std::string::npos) << smooth;
    }
    EXPECT_EQ(text_on_box, 0);
    wipe();
    for (const int index : {1, -1})
        draw_slot(picture.get(), std::span(&slot, 1), index);
    EXPECT_EQ(ink(), 0);
}

TEST_F(Slots, SmoothTheirTextOnlyOnCleanBackground) {
    anti_aliased_text = 1;
    Slot slot = make_slot("gSOS", {{&Slot::fore_colour, 2}, {&Slot::dest_x, 100}, {&Slot::dest_y, 100}});
    drawn(slot);
    EXPECT_GT(shades(2), 0);
    Slot field = slot, skipped = slot, boxed = slot;
    field.input_mode = 2;
    skipped.draw_flags[2] = 'x';
    set_fields(boxed, {{&Slot::box_width, 50}, {&Slot::box_height, 50}, {&Slot::back_colour, 300}});
    for (const Slot& hard : {field, skipped, boxed}) {
        EXPECT_GT(drawn(hard).x2, 100);
        EXPECT_EQ(shades(2), 0);
    }
}

TEST_F(Slots, CutTheirPictureOutOfABuffer) {
    put_buffer(5, 200, 100, pixel_of(3));
    putpixel(graphic_buffers[5].get(), 12, 8, bitmap_mask_color(graphic_buffers[5].get()));
    Slot slot = make_slot("", {{&Slot::graphic, 1}, {&Slot::buffer, 5}, {&Slot::src_x, 10}, {&Slot::src_y, 5}});
    set_fields(slot, {{&Slot::box_width, 110}, {&Slot::box_height, 45}, {&Slot::dest_x, 50}});
    EXPECT_TRUE(same(drawn(slot), {50, 0, 149, 39}));
    EXPECT_EQ(at(52, 3), 0); // the mask colour is left out
    show_slot_pictures = 0;
    EXPECT_TRUE(same(drawn(slot), nothing));
    show_slot_pictures = 1;
    slot.buffer = 6; // empty
    EXPECT_TRUE(same(drawn(slot), nothing));
}

TEST_F(Slots, NeitherOverflowNorLeaveThePictureWhenHostile) {
    put_buffer(5, 200, 100, pixel_of(3));
    for (const int bad : {INT_MIN, INT_MIN + 1, -70000, -1, 0, 1, 255, 70000, INT_MAX})
        for (const int good : {0, 5, 100})
            for (const char* text : {"text", "TEXT-WIN"}) {
                Slot slot = make_slot(text, {{&Slot::dest_x, bad}, {&Slot::dest_y, good ? good : bad}});
                for (std::int32_t* field : {&slot.font, &slot.size, &slot.box_width, &slot.box_height, &slot.column,
                                            &slot.row, &slot.src_x, &slot.src_y, &slot.sound, &slot.back_colour})
                    *field = bad;
                slot.buffer = good ? 5 : bad;
                std::memset(slot.sound_flags, '9', sizeof slot.sound_flags); // no terminating zero
                slot.draw_flags[1] = 's';
                for (const int graphic : {0, 1, bad}) {
                    slot.graphic = graphic;
                    std::vector<std::string> edit_texts;
                    const auto places = draw_slot_set(picture.get(), {{slot}, {}}, edit_texts);
                    EXPECT_GE(places[0].size, 0);
                    EXPECT_LE(places[0].size, 90);
                    EXPECT_LE(edit_texts[0].size(), 254u);
                }
            }
}

TEST_F(Slots, OfWholeSetsRecordTheirFieldsAndOnlyTheFirstSoundIsHeard) {
    SlotSet set{{make_slot("A", {{&Slot::dest_x, 10}, {&Slot::dest_y, 20}}), make_slot("B"), make_slot("C")}, {}};
    set_fields(set.slots[1], {{&Slot::font, 10}, {&Slot::column, 2}, {&Slot::row, 3}}); // cells of 14 x 20
    set_fields(set.slots[1], {{&Slot::size, 12}, {&Slot::input_mode, 1}, {&Slot::back_colour, 9}, {&Slot::sound, 7}});
    std::vector<std::string> edit_texts{"left over", "", "", ""};
    sound_on = 0;
    sfx_allowed = 1;
    anti_aliased_text = 1;
    const auto places = draw_slot_set(picture.get(), set, edit_texts);
    EXPECT_EQ(sfx_allowed, 0); // held from the slot with a sound on, and not given back while sound is off
    EXPECT_EQ(full_redraw, 0);
    ASSERT_EQ(places.size(), 3u);
    EXPECT_EQ(places[0].x, 10);
    const FieldPlace& field = places[1];
    EXPECT_EQ((std::array{field.x, field.y, field.size, field.input_mode, field.back_colour}),
              (std::array{28, 60, 12, 1, 9}));
    EXPECT_EQ(edit_texts, (std::vector<std::string>{"", std::string(11, ' '), ""}));
    sound_on = 1;
    build_entry_table(picture.get(), set.slots);
    EXPECT_EQ(sfx_allowed, 1);
}

} // namespace
} // namespace vcc::test
