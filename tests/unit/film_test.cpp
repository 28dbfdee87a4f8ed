// Frames, places and the clock of a film; films that cannot be played.
#include "film/film.h"
#include "film/film_rules.h"
#include "sound/music.h"
#include "sound/sound.h"
#include "support/avi_file.h"
#include "support/stand_in_display.h"

#include <gtest/gtest.h>

namespace vcc {
namespace {

using Bytes = std::vector<std::uint8_t>;

platform::AviFrame frame_of(int width, int height, int bits, const Bytes& rows) {
    platform::AviFrame frame;
    frame.width = width;
    frame.height = height;
    frame.bits = bits;
    frame.rows = rows;
    return frame;
}

TEST(FilmFrame, EveryDepthIsUprightAndInTheLibrarysFormat) {
    test::start_library();
    const struct {
        int bits;
        Bytes rows;                     // 1 x 2 pixels, the bottom row first, padded
        std::array<int, 3> top, bottom; // red, green, blue
    } cases[] = {{16, {0x1F, 0x00, 9, 9, 0x10, 0x7E, 9, 9}, {255, 131, 132}, {0, 0, 255}}, // 31, 16, 16 above 0, 0, 31
                 {24, {1, 2, 3, 9, 10, 20, 30, 9}, {30, 20, 10}, {3, 2, 1}},
                 {32, {1, 2, 3, 99, 10, 20, 30, 99}, {30, 20, 10}, {3, 2, 1}}};
    for (const auto& each : cases) {
        const BitmapPtr surface(create_bitmap_ex(each.bits, 1, 2));
        decode_frame(surface.get(), frame_of(1, 2, each.bits, each.rows));
        for (const int row : {0, 1}) {
            const auto& [red, green, blue] = row == 0 ? each.top : each.bottom;
            const int pixel = getpixel(surface.get(), 0, row), tolerance = each.bits == 16 ? 4 : 0;
            EXPECT_NEAR(getr_depth(each.bits, pixel), red, tolerance) << each.bits;
            EXPECT_NEAR(getg_depth(each.bits, pixel), green, tolerance) << each.bits;
            EXPECT_NEAR(getb_depth(each.bits, pixel), blue, tolerance) << each.bits;
        }
    }
}

TEST(FilmFrame, EightBitsKeepTheirIndicesAndBringTheirColours) {
    test::start_library();
    const BitmapPtr surface(create_bitmap_ex(8, 3, 2));
    Bytes table(1024);
    table[4 * 7] = 252;       // blue
    table[4 * 200 + 2] = 128; // red
    const Bytes rows{1, 2, 3, 0, 7, 200, 255, 0};
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
    const Bytes rows(16, 255), none;
    for (const platform::AviFrame& frame :
         {frame_of(2, 2, 32, rows), frame_of(2, 3, 24, rows), frame_of(3, 2, 24, rows), frame_of(2, 2, 12, rows),
          frame_of(2, 2, 24, none)})
        decode_frame(surface.get(), frame);
    EXPECT_EQ(getpixel(surface.get(), 1, 1), 0x123456);
    decode_frame(surface.get(), frame_of(2, 2, 24, rows));
    EXPECT_EQ(getpixel(surface.get(), 1, 1), 0xFFFFFF);
}

TEST(FilmPlace, FilmsAreCentredAndLargeOnesShowTheirMiddle) {
    using Place = std::array<int, 6>; // source, place, size
    for (const auto& [width, height, wanted] : {std::tuple(640, 480, Place{0, 0, 80, 60, 640, 480}),
                                                {800, 600, {0, 0, 0, 0, 800, 600}},
                                                {1024, 768, {112, 84, 0, 0, 800, 600}},
                                                {1000, 100, {100, 0, 0, 250, 800, 100}}}) {
        const FilmPlace at = place_film(width, height, 800, 600);
        EXPECT_EQ((Place{at.source_x, at.source_y, at.x, at.y, at.width, at.height}), wanted);
    }
}

TEST(FilmClock, StopsOrStartsAgainAfterTheEnd) {
    FilmClock clock;
    clock.end_ms = 20;
    const auto after = [&](int ticks) {
        for (; ticks > 0; --ticks)
            clock.tick();
        return clock.time_ms.load();
    };
    EXPECT_EQ(after(1), 0); // not playing yet
    clock.playing = true;
    EXPECT_EQ(after(3), 30);
    clock.restart = true;
    EXPECT_EQ(after(1), 0);
    clock.restart = false;
    after(4);
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
    for (const auto& [path, told] :
         {std::pair("images/missing.avi", "Error while initializing/loading AVI-File <images/missing.avi>: File does "
                                          "not exist, or error reading from the file!"),
          {"images\\text.avi", "Error while initializing/loading AVI-File <images\\text.avi>: Bad AVI file format!"},
          {"images/sound.avi", "<images/sound.avi>: Unable to read audio stream format!"},
          {"images/empty.avi", "Error creating video surface for AVI-File:<images/empty.avi>"}}) {
        sound_entries[182].sample.reset(create_sample(8, 0, 11025, 10));
        play_film(path, 182);
        EXPECT_NE(folder.log().find(told), std::string::npos) << folder.log();
        EXPECT_EQ(sound_entries[182].sample, nullptr);
        EXPECT_EQ(sfx_volume, 77);
        EXPECT_EQ(current_theme, 3);
    }
    EXPECT_EQ(film_error_text(platform::AviError::other), "Unknown error code!");
}

} // namespace
} // namespace vcc
