// Pictures, the pointer, the rotating backgrounds and the graphic buffers.
#include "display/backgrounds.h"
#include "display/buffers.h"
#include "display/picture.h"
#include "display/pointer.h"
#include "support/stand_in_display.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {
BITMAP* sprite = nullptr; // what the library believes to be the pointer
int sprite_focus[2] = {};
} // namespace

extern "C" {
void set_mouse_sprite(BITMAP* picture) {
    sprite = picture;
}
void set_mouse_sprite_focus(int x, int y) {
    sprite_focus[0] = x;
    sprite_focus[1] = y;
}
}

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
    save_grey("images/Good.PCX", 20, 10, 77);
    const std::string good = folder.read("images/Good.PCX");
    const struct {
        const char* name;
        std::size_t offset;
        std::string bytes;
    } cases[] = {{"manufacturer", 0, "\x0b"}, {"one bit", 3, "\x01"},      {"four planes", 65, "\x04"},
                 {"no width", 4, "\xff\x7f"}, {"too wide", 8, "\xff\x7f"}, {"too high", 10, "\xff\x7f"},
                 {"short lines", 66, "\x05"}};
    for (const auto& c : cases) {
        std::string bad = good;
        folder.write("images/bad.pcx", bad.replace(c.offset, c.bytes.size(), c.bytes));
        EXPECT_EQ(load_picture("images/bad.pcx"), nullptr) << c.name;
    }
    folder.write("images/cut.pcx", good.substr(0, 127));
    for (const char* name : {"images/cut.pcx", "", "images"})
        EXPECT_EQ(load_picture(name), nullptr) << name;
    const BitmapPtr picture = load_picture("IMAGES\\good.pcx");
    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(std::pair(picture->w, picture->h), std::pair(20, 10));
    EXPECT_EQ(getr32(getpixel(picture.get(), 19, 9)), 77);
}

TEST_F(Display, OwnDecoderAndTheLibraryAgree) {
    for (const int width : {1, 20, 33, 801}) { // noise, and rows of one colour that make long runs
        const BitmapPtr made(create_bitmap_ex(24, width, 30));
        for (int y = 0; y < 30; ++y)
            for (int x = 0; x < width; ++x)
                putpixel(made.get(), x, y, y < 10 ? makecol24(200, 0, 77) : (x * 48271 + y * 69621) % 0xFFFFFF);
        save_pcx("made.pcx", made.get(), nullptr);
        const std::string whole = folder.read("made.pcx");
        for (const std::size_t size : {whole.size(), (picture_header_size + whole.size()) / 2}) { // the end is missing
            folder.write("made.pcx", whole.substr(0, size));
            for (const int depth : {15, 16, 24, 32}) {
                SCOPED_TRACE(std::to_string(width) + " wide, " + std::to_string(depth) + " bits");
                set_color_depth(depth);
                PALETTE ours{}, theirs{};
                const BitmapPtr picture = load_picture("made.pcx", &ours), expected(load_pcx("made.pcx", theirs));
                ASSERT_TRUE(picture && expected && picture->w == width && bitmap_color_depth(picture.get()) == depth);
                for (int y = 0; y < 30; ++y)
                    for (int x = 0; x < width; ++x)
                        ASSERT_EQ(getpixel(picture.get(), x, y), getpixel(expected.get(), x, y)) << x << ", " << y;
                EXPECT_EQ(std::memcmp(ours, theirs, sizeof ours), 0);
            }
        }
    }
    set_color_depth(32);
}

TEST_F(Display, BackgroundRotationStepsOverPicturesThatAreMissing) {
    for (const int number : {1, 2, 4})
        save_grey("images/morv" + std::to_string(number) + ".pcx", 800, 600, 10 * number);
    EXPECT_EQ(load_backgrounds(), 3);
    background_rotation = 0;
    for (const int grey : {10, 20, 0, 0, 10, 20})
        EXPECT_EQ(shown(show_next_background), grey) << background_rotation;
    save_grey("images/morv3.pcx", 800, 600, 30);
    EXPECT_EQ(load_backgrounds(), 0);
    EXPECT_EQ(shown(show_next_background), 30);
    free_backgrounds();
    EXPECT_EQ(shown(show_next_background), 0);
    EXPECT_EQ(background_rotation, 8);
}

TEST_F(Display, BufferZeroIsShownUntilItIsReleased) {
    graphic_buffers[0].reset(create_bitmap_ex(32, 800, 600));
    clear_to_color(graphic_buffers[0].get(), makecol32(90, 90, 90));
    EXPECT_EQ(shown(show_buffer_zero), 90);
    release_graphic_buffers();
    EXPECT_EQ(shown(show_buffer_zero), 0);
    EXPECT_EQ(graphic_buffer(-1), nullptr);
    EXPECT_EQ(graphic_buffer(25), nullptr);
}

TEST_F(Display, PointerPictureStaysUntilTheNextOneIsTheSprite) {
    save_grey("images/pointer.pcx", 16, 16, 1);
    save_grey("images/other.pcx", 8, 8, 1);
    ASSERT_TRUE(load_mouse_pointer("images/", "pointer.pcx"));
    EXPECT_EQ(sprite, pointer_picture.get());
    EXPECT_EQ(std::pair(sprite_focus[0], sprite_focus[1]), std::pair(6, 1));
    ASSERT_TRUE(load_mouse_pointer("images/", "other.pcx"));
    EXPECT_EQ(sprite->w, 8);
    EXPECT_FALSE(load_mouse_pointer("images/", "missing.pcx"));
    EXPECT_EQ(sprite, pointer_picture.get());

    folder.write("data/logfiles/veldor_log.txt", "");
    folder.write("images/pointer.pcx", "no picture");
    install_mouse_and_pointer();
    EXPECT_EQ(sprite, nullptr);
    EXPECT_EQ(pointer_picture, nullptr);
    EXPECT_NE(folder.log().find("VCC: Error loading mousepointer!"), std::string::npos);
}

} // namespace
} // namespace vcc
