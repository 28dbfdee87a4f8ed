// Pictures, read at once or ahead on a thread of their own, and the rotating backgrounds.
#include "display/backgrounds.h"
#include "display/picture.h"
#include "display/pictures_ahead.h"
#include "support/allegro_none.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace vcc {
namespace {

class Display : public testing::Test {
protected:
    Display() { std::filesystem::create_directory("images"); }

    /// A PCX file of one grey value.
    static void save_grey(const std::string& name, int width, int height, int grey) {
        const BitmapPtr picture(create_bitmap_ex(24, width, height));
        clear_to_color(picture.get(), makecol24(grey, grey, grey));
        save_pcx(name.c_str(), picture.get(), nullptr);
    }
    /// What one call brings to the display.
    int shown(void (*show)()) const {
        clear_bitmap(screen);
        show();
        return getr32(display.at(3, 2));
    }

    test::ScratchFolder folder;
    test::StandInDisplay display;
};

TEST_F(Display, PicturesWithAHeaderThatTheLibraryMustNotSeeAreRefused) {
    save_grey("good.pcx", 20, 10, 77);
    const std::string good = folder.read("good.pcx");
    for (const auto& [what, offset, byte] : {std::tuple("no height", 7u, '\x7f'),
                                             {"too wide", 9, '\x7f'},
                                             {"too high", 11, '\x7f'},
                                             {"short lines", 66, '\5'}}) {
        std::string bad = good;
        bad[offset] = byte;
        folder.write("bad.pcx", bad);
        EXPECT_FALSE(load_picture("bad.pcx")) << what;
    }
    folder.write("cut.pcx", good.substr(0, 127));
    EXPECT_FALSE(load_picture("cut.pcx"));
    EXPECT_TRUE(load_picture("good.pcx"));
}

TEST_F(Display, OwnDecoderAndTheLibraryAgree) {
    for (const auto& [width, depth] : {std::pair(1, 32), {33, 16}, {801, 32}}) { // long runs, and noise
        set_color_depth(depth);
        const BitmapPtr made(create_bitmap_ex(24, width, 20));
        for (int y = 0; y < 20; ++y)
            for (int x = 0; x < width; ++x)
                putpixel(made.get(), x, y, y < 10 ? makecol24(200, 0, 77) : (x * 48271 + y * 69621) % 0xFFFFFF);
        save_pcx("made.pcx", made.get(), nullptr);
        const std::string whole = folder.read("made.pcx");
        for (const std::size_t size : {whole.size(), whole.size() / 2 + 64}) { // the end is missing
            folder.write("made.pcx", whole.substr(0, size));
            const BitmapPtr picture = load_picture("made.pcx").value_or(nullptr),
                            expected(load_pcx("made.pcx", nullptr));
            ASSERT_TRUE(picture && expected && picture->w == width && picture->h == 20);
            for (int y = 0; y < 20; ++y)
                for (int x = 0; x < width; ++x)
                    ASSERT_EQ(getpixel(picture.get(), x, y), getpixel(expected.get(), x, y)) << x << ", " << y;
        }
    }
}

TEST_F(Display, PaddedLinesAreNoReasonToCallAPictureIncomplete) {
    const BitmapPtr made(create_bitmap_ex(24, 2, 2));
    clear_to_color(made.get(), makecol24(10, 20, 30));
    save_pcx("padded.pcx", made.get(), nullptr);
    std::string bytes = folder.read("padded.pcx").substr(0, picture_header_size);
    bytes[66] = '\x88', bytes[67] = '\x13'; // 5000 bytes a line and plane
    for (int line = 0; line < 2; ++line)
        for (const char sample : {'\12', '\24', '\36'}) {
            bytes += {sample, sample};
            for (int run = 0; run < 79; ++run)
                bytes += {'\xFF', 'x'};
            bytes += {'\xD5', 'x'};
        }
    folder.write("padded.pcx", bytes);
    folder.write("data/logfiles/veldor_log.txt", "");
    const BitmapPtr picture = load_picture("padded.pcx").value_or(nullptr);
    ASSERT_TRUE(picture);
    for (const auto& [x, y] : {std::pair(0, 0), {1, 0}, {0, 1}, {1, 1}})
        EXPECT_EQ(getpixel(picture.get(), x, y), makecol(10, 20, 30)) << x << ", " << y;
    EXPECT_EQ(folder.log(), "");
}

TEST_F(Display, BackgroundRotationStepsOverPicturesThatAreMissing) {
    save_grey("images/morv1.pcx", 800, 600, 10);
    save_grey("images/morv2.pcx", 800, 600, 20);
    EXPECT_EQ(load_backgrounds(), 3);
    background_rotation = 0;
    for (const int grey : {10, 20, 0, 0, 10})
        EXPECT_EQ(shown(show_next_background), grey) << background_rotation;
    free_backgrounds();
    EXPECT_EQ(shown(show_next_background), 0);
}

TEST_F(Display, PicturesReadAheadComeInTheirOrderAndMayBeLeftOut) {
    std::vector<std::string> paths{"missing.pcx", "broken.pcx"};
    for (int number = 1; number <= 7; ++number) { // 42 MB of samples, more than may wait
        const BitmapPtr picture(create_bitmap_ex(24, 500 * number, 1000));
        clear_bitmap(picture.get());
        save_pcx(("picture" + std::to_string(number) + ".pcx").c_str(), picture.get(), nullptr);
        paths.push_back("Picture" + std::to_string(number) + ".pcx"); // found whatever its letters' case
    }
    folder.write("broken.pcx", folder.read("picture7.pcx").substr(0, 130));
    read_pictures_ahead(paths);

    const auto width_of = [](const char* path) {
        const auto picture = take_picture(path);
        return picture ? picture->header.width : 0;
    };
    EXPECT_EQ(width_of("broken.pcx"), 0);
    EXPECT_EQ(width_of("Picture1.pcx"), 500);
    EXPECT_EQ(width_of("other.pcx"), 0);
    EXPECT_EQ(width_of("Picture4.pcx"), 2000);
    EXPECT_EQ(width_of("Picture3.pcx"), 0) << "dropped";
    EXPECT_TRUE(load_picture("Picture3.pcx")) << "read now";
    EXPECT_EQ(width_of("Picture7.pcx"), 3500);

    const auto long_ago = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
    std::filesystem::last_write_time("picture1.pcx", long_ago); // some libraries tell whole seconds
    read_pictures_ahead(paths);
    read_pictures_ahead(paths);                                  // instead of what is left
    std::this_thread::sleep_for(std::chrono::milliseconds(300)); // the first six wait, and no more may
    folder.write("picture1.pcx", folder.read("picture2.pcx"));
    EXPECT_EQ(width_of("Picture1.pcx"), 0) << "changed since it was read";
    EXPECT_EQ(width_of("Picture2.pcx"), 1000);
    EXPECT_EQ(width_of("Picture6.pcx"), 3000);
    stop_reading_ahead();
    EXPECT_EQ(width_of("Picture7.pcx"), 0);
}

} // namespace
} // namespace vcc
