// Pictures, the pointer, the rotating backgrounds and the graphic buffers.
#include "display/backgrounds.h"
#include "display/buffers.h"
#include "display/picture.h"
#include "display/pointer.h"
#include "support/allegro_none.h"

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

using test::ScratchFolder;

/// A PCX file of one grey value.
std::string pcx(int width, int height, int grey) {
    test::start_library();
    const std::string name = "made.pcx";
    const BitmapPtr picture(create_bitmap_ex(24, width, height));
    clear_to_color(picture.get(), makecol24(grey, grey, grey));
    save_pcx(name.c_str(), picture.get(), nullptr);
    std::ifstream in(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// `screen` for the length of a test; the library has none without a display.
class FakeScreen {
public:
    FakeScreen() : bitmap_(create_bitmap_ex(32, 800, 600)) {
        clear_bitmap(bitmap_.get());
        screen = bitmap_.get();
    }
    ~FakeScreen() { screen = nullptr; }
    int grey() const { return getr32(getpixel(bitmap_.get(), 3, 2)); }

private:
    BitmapPtr bitmap_;
};

TEST(Picture, HeaderThatTheLibraryMustNotSeeIsRefused) {
    const ScratchFolder folder;
    const std::string good = pcx(20, 10, 77);
    struct Case {
        const char* name;
        std::size_t offset;
        std::string bytes;
    };
    const Case cases[] = {
        {"manufacturer", 0, "\x0b"},        {"one bit", 3, "\x01"},
        {"four planes", 65, "\x04"},        {"negative width", 4, std::string("\xff\x7f", 2)},
        {"too wide", 8, "\xff\x7f"},        {"too high", 10, "\xff\x7f"},
        {"short lines", 66, {"\x05\0", 2}},
    };
    for (const Case& c : cases) {
        std::string bad = good;
        bad.replace(c.offset, c.bytes.size(), c.bytes);
        folder.write("images/bad.pcx", bad);
        EXPECT_EQ(load_picture("images/bad.pcx"), nullptr) << c.name;
    }
    folder.write("images/bad.pcx", good.substr(0, 127));
    EXPECT_EQ(load_picture("images/bad.pcx"), nullptr);
    EXPECT_EQ(load_picture(""), nullptr);
    EXPECT_EQ(load_picture("images"), nullptr);

    folder.write("images/Good.PCX", good);
    const BitmapPtr picture = load_picture("IMAGES\\good.pcx");
    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(picture->w, 20);
    EXPECT_EQ(picture->h, 10);
    EXPECT_EQ(bitmap_color_depth(picture.get()), 32);
    EXPECT_EQ(getr32(getpixel(picture.get(), 19, 9)), 77);
}

TEST(Picture, OwnDecoderAndTheLibraryAgree) {
    const ScratchFolder folder;
    test::start_library();
    for (const int width : {1, 20, 33, 801}) { // noise, and rows of one colour that make long runs
        const BitmapPtr made(create_bitmap_ex(24, width, 30));
        for (int y = 0; y < 30; ++y)
            for (int x = 0; x < width; ++x)
                putpixel(made.get(), x, y, y < 10 ? makecol24(200, 0, 77) : (x * 48271 + y * 69621) % 0xFFFFFF);
        save_pcx("made.pcx", made.get(), nullptr);
        const std::string whole = folder.read("made.pcx");
        for (const std::size_t size :
             {whole.size(), (picture_header_size + whole.size()) / 2}) { // whole, and with its end missing
            folder.write("made.pcx", whole.substr(0, size));
            PALETTE ours{}, theirs{};
            const BitmapPtr picture = load_picture("made.pcx", &ours), expected(load_pcx("made.pcx", theirs));
            ASSERT_TRUE(picture && expected) << width;
            ASSERT_EQ(picture->w, width);
            for (int y = 0; y < 30; ++y)
                ASSERT_EQ(std::memcmp(picture->line[y], expected->line[y], static_cast<std::size_t>(width) * 4), 0)
                    << width << " wide, " << size << " bytes, row " << y;
            EXPECT_EQ(std::memcmp(ours, theirs, sizeof ours), 0);
        }
    }
}

TEST(Backgrounds, RotationStepsOverPicturesThatAreMissing) {
    const ScratchFolder folder;
    const FakeScreen display;
    folder.write("images/morv1.pcx", pcx(800, 600, 10));
    folder.write("images/morv2.pcx", pcx(800, 600, 20));
    folder.write("images/morv4.pcx", pcx(800, 600, 40));
    EXPECT_EQ(load_backgrounds(), 3);
    background_rotation = 0;
    for (const int grey : {10, 20, 0, 0, 10, 20}) {
        clear_bitmap(screen);
        show_next_background();
        EXPECT_EQ(display.grey(), grey) << background_rotation;
    }
    folder.write("images/morv3.pcx", pcx(800, 600, 30));
    EXPECT_EQ(load_backgrounds(), 0);
    show_next_background();
    EXPECT_EQ(display.grey(), 30);

    free_backgrounds();
    free_backgrounds();
    clear_bitmap(screen);
    show_next_background();
    EXPECT_EQ(display.grey(), 0);
    EXPECT_EQ(background_rotation, 8);
}

TEST(Buffers, BufferZeroIsShownUntilItIsReleased) {
    const FakeScreen display;
    graphic_buffers[0].reset(create_bitmap_ex(32, 800, 600));
    clear_to_color(graphic_buffers[0].get(), makecol32(90, 90, 90));
    show_buffer_zero();
    EXPECT_EQ(display.grey(), 90);
    release_graphic_buffers();
    clear_bitmap(screen);
    show_buffer_zero();
    EXPECT_EQ(display.grey(), 0);
    EXPECT_EQ(graphic_buffer(-1), nullptr);
    EXPECT_EQ(graphic_buffer(25), nullptr);
}

TEST(Pointer, PictureStaysUntilTheNextOneIsTheSprite) {
    const ScratchFolder folder;
    folder.write("images/pointer.pcx", pcx(16, 16, 1));
    folder.write("images/other.pcx", pcx(8, 8, 1));
    ASSERT_TRUE(load_mouse_pointer("images/", "pointer.pcx"));
    EXPECT_EQ(sprite, pointer_picture.get());
    EXPECT_EQ(sprite_focus[0], 6);
    EXPECT_EQ(sprite_focus[1], 1);
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
