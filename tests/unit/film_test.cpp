#include "core/handles.h"
#include "core/log.h"
#include "film/film.h"
#include "film/film_rules.h"
#include "sound/music.h"
#include "sound/sound.h"
#include "support/allegro_none.h"
#include "support/avi_file.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace vcc {
namespace {

platform::AviFrame frame_of(int width, int height, int bits, const std::vector<std::uint8_t>& rows) {
    platform::AviFrame frame;
    frame.width = width;
    frame.height = height;
    frame.bits = bits;
    frame.rows = rows;
    return frame;
}

struct FrameCase {
    int bits;
    std::vector<std::uint8_t> rows; // 1 x 2 pixels, the bottom row first, padded
    std::array<int, 3> top, bottom; // red, green, blue
};

TEST(FilmFrame, EveryDepthIsUprightAndInTheLibrarysFormat) {
    test::start_library();
    const FrameCase cases[] = {
        {16, {0x1F, 0x00, 9, 9, 0x10, 0x7E, 9, 9}, {255, 131, 132}, {0, 0, 255}}, // 31, 16, 16 above 0, 0, 31
        {24, {1, 2, 3, 9, 10, 20, 30, 9}, {30, 20, 10}, {3, 2, 1}},
        {32, {1, 2, 3, 99, 10, 20, 30, 99}, {30, 20, 10}, {3, 2, 1}},
    };
    for (const FrameCase& each : cases) {
        const BitmapPtr surface(create_bitmap_ex(each.bits, 1, 2));
        clear_bitmap(surface.get());
        decode_frame(surface.get(), frame_of(1, 2, each.bits, each.rows));
        int row = 0;
        for (const auto& colour : {each.top, each.bottom}) {
            const int pixel = getpixel(surface.get(), 0, row++);
            EXPECT_NEAR(getr_depth(each.bits, pixel), colour[0], each.bits == 16 ? 4 : 0) << each.bits;
            EXPECT_NEAR(getg_depth(each.bits, pixel), colour[1], each.bits == 16 ? 4 : 0) << each.bits;
            EXPECT_NEAR(getb_depth(each.bits, pixel), colour[2], each.bits == 16 ? 4 : 0) << each.bits;
        }
    }
}

TEST(FilmFrame, EightBitsKeepTheirIndicesAndBringTheirColours) {
    test::start_library();
    const BitmapPtr surface(create_bitmap_ex(8, 3, 2));
    std::vector<std::uint8_t> table(1024);
    table[4 * 7] = 252;       // blue
    table[4 * 200 + 2] = 128; // red
    const std::vector<std::uint8_t> rows{1, 2, 3, 0, 7, 200, 255, 0};
    platform::AviFrame frame = frame_of(3, 2, 8, rows);
    frame.colour_table = table;
    decode_frame(surface.get(), frame);
    EXPECT_EQ(getpixel(surface.get(), 1, 0), 200);
    EXPECT_EQ(getpixel(surface.get(), 2, 1), 3);
    PALETTE palette;
    film_palette(frame, palette);
    EXPECT_EQ(palette[7].b, 63);
    EXPECT_EQ(palette[200].r, 32);
}

TEST(FilmFrame, AFrameThatDoesNotFitLeavesThePicture) {
    test::start_library();
    const BitmapPtr surface(create_bitmap_ex(24, 2, 2));
    clear_to_color(surface.get(), 0x123456);
    const std::vector<std::uint8_t> rows(16, 255);
    for (const platform::AviFrame& frame :
         {frame_of(2, 2, 32, rows), frame_of(2, 3, 24, rows), frame_of(3, 2, 24, rows), frame_of(2, 2, 12, rows),
          frame_of(2, 2, 24, std::vector<std::uint8_t>())})
        decode_frame(surface.get(), frame);
    EXPECT_EQ(getpixel(surface.get(), 1, 1), 0x123456);
    decode_frame(surface.get(), frame_of(2, 2, 24, rows));
    EXPECT_EQ(getpixel(surface.get(), 1, 1), 0xFFFFFF);
}

TEST(FilmPlace, FilmsAreCentredAndLargeOnesShowTheirMiddle) {
    const struct {
        int width, height;
        FilmPlace place;
    } cases[] = {
        {640, 480, {0, 0, 80, 60, 640, 480}},
        {800, 600, {0, 0, 0, 0, 800, 600}},
        {1024, 768, {112, 84, 0, 0, 800, 600}},
        {1000, 100, {100, 0, 0, 250, 800, 100}},
    };
    for (const auto& each : cases) {
        const FilmPlace place = place_film(each.width, each.height, 800, 600);
        EXPECT_EQ(place.source_x, each.place.source_x) << each.width;
        EXPECT_EQ(place.source_y, each.place.source_y) << each.width;
        EXPECT_EQ(place.x, each.place.x) << each.width;
        EXPECT_EQ(place.y, each.place.y) << each.width;
        EXPECT_EQ(place.width, each.place.width) << each.width;
        EXPECT_EQ(place.height, each.place.height) << each.width;
    }
}

TEST(FilmClock, StopsOrStartsAgainAfterTheEnd) {
    FilmClock clock;
    clock.end_ms = 20;
    clock.tick();
    EXPECT_EQ(clock.time_ms, 0); // not playing yet
    clock.playing = true;
    for (int i = 0; i < 3; ++i)
        clock.tick();
    EXPECT_EQ(clock.time_ms, 30);
    clock.restart = true;
    clock.tick();
    EXPECT_EQ(clock.time_ms, 0);
    clock.restart = false;
    for (int i = 0; i < 4; ++i)
        clock.tick();
    EXPECT_FALSE(clock.playing);
}

TEST(PlayFilm, FailuresAreLoggedAndDropTheEffectOnly) {
    test::start_library();
    const test::ScratchFolder folder;
    folder.write("data/logfiles/here", "");
    folder.write("images/text.avi", "no film");
    folder.write("images/sound.avi", test::AviFile(2, 2, 24).audio("").bytes());
    folder.write("images/empty.avi", test::AviFile(2, 2, 24).bytes());
    sound_on = 1;
    sfx_volume = 77;
    current_theme = 3;
    const struct {
        const char *path, *text;
    } cases[] = {
        {"images/missing.avi",
         "Error while initializing/loading AVI-File <images/missing.avi>: File does not exist, or "
         "error reading from the file!"},
        {"images\\text.avi", "Error while initializing/loading AVI-File <images\\text.avi>: Bad AVI file format!"},
        {"images/sound.avi", "<images/sound.avi>: Unable to read audio stream format!"},
        {"images/empty.avi", "Error creating video surface for AVI-File:<images/empty.avi>"},
    };
    for (const auto& each : cases) {
        sound_entries[182].sample.reset(create_sample(8, 0, 11025, 10));
        play_film(each.path, 182);
        EXPECT_NE(folder.log().find(each.text), std::string::npos) << folder.log();
        EXPECT_EQ(sound_entries[182].sample, nullptr);
        EXPECT_EQ(sfx_volume, 77);
        EXPECT_EQ(current_theme, 3);
    }
    EXPECT_EQ(film_error_text(platform::AviError::other), "Unknown error code!");
}

} // namespace
} // namespace vcc
