// The frames of a film, their place and their colours; films that cannot be played.
#include "film/film.h"
#include "folder_test.h"
#include "sound/music.h"
#include "sound/sound.h"
#include "support/avi_file.h"

namespace vcc {
namespace {

using Bytes = std::vector<std::uint8_t>;

platform::AviFrame frame_of(int width, int height, int bits, const Bytes& rows, const Bytes& colours = {}) {
    return {width, height, 0, bits, colours, rows.data(), (width * bits / 8 + 3) / 4 * 4};
}

TEST(FilmFrame, EveryDepthComesInTheLibrarysFormat) {
    test::start_library();
    const struct {
        int bits;
        Bytes rows; // 1 x 2 pixels, padded
        int top, bottom;
    } cases[] = {{8, {7, 9, 9, 9, 200, 9, 9, 9}, 7, 200},
                 {16, {0x1F, 0x00, 9, 9, 0x10, 0x7E, 9, 9}, makecol16(0, 0, 255), makecol16(255, 131, 132)},
                 {24, {1, 2, 3, 9, 10, 20, 30, 9}, makecol24(3, 2, 1), makecol24(30, 20, 10)},
                 {32, {1, 2, 3, 99, 10, 20, 30, 99}, makecol32(3, 2, 1), makecol32(30, 20, 10)}};
    for (const auto& [bits, rows, top, bottom] : cases) {
        const BitmapPtr surface(create_bitmap_ex(bits, 1, 2));
        decode_frame(surface.get(), frame_of(1, 2, bits, rows));
        EXPECT_EQ(getpixel(surface.get(), 0, 0), top) << bits;
        EXPECT_EQ(getpixel(surface.get(), 0, 1), bottom) << bits;
    }
}

TEST(FilmFrame, EightBitsBringTheirColours) {
    Bytes table(1024);
    std::ranges::copy(Bytes{252, 128, 64}, table.end() - 4); // blue, green, red
    PALETTE palette;
    film_palette(frame_of(1, 1, 8, {}, table), palette);
    EXPECT_EQ(std::tuple(palette[255].r, palette[255].g, palette[255].b), std::tuple(16, 32, 63));
    EXPECT_EQ(palette[0].b, 0);
}

TEST(FilmPlace, FilmsAreCentredAndOfLargeOnesTheMiddleIsShown) {
    const FilmPlace at = place_film(1000, 100, 800, 600);
    EXPECT_EQ(std::tuple(at.source_x, at.x, at.width), std::tuple(100, 0, 800));
    EXPECT_EQ(std::tuple(at.source_y, at.y, at.height), std::tuple(0, 250, 100));
}

using PlayFilm = test::FolderTest;

TEST_F(PlayFilm, FailuresAreLoggedAndDropTheEffectOnly) {
    folder.write("images/text.avi", "no film");
    folder.write("images/empty.avi", test::AviFile{}.bytes());
    sound_on = 1;
    sfx_volume = 77;
    current_theme = 3;
    for (const auto& [path, told] :
         {std::pair("images\\text.avi", "initializing/loading AVI-File <images\\text.avi>: Bad AVI file format!"),
          {"images/empty.avi", "Error creating video surface for AVI-File:<images/empty.avi>"}}) {
        sound_entries[182].sample.reset(create_sample(8, 0, 11025, 10));
        play_film(path, 182);
        EXPECT_TRUE(logged(told)) << folder.log();
        EXPECT_EQ(sound_entries[182].sample, nullptr);
        EXPECT_EQ(sfx_volume, 77);
        EXPECT_EQ(current_theme, 3);
    }
}

} // namespace
} // namespace vcc
