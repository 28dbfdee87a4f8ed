#include "core/handles.h"
#include "platform/truetype.h"
#include "platform/truetype_draw.h"
#include "support/allegro_none.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace vcc::platform {
namespace {

constexpr const char* sans = "/usr/share/fonts/truetype/liberation/LiberationSans-Regular.ttf";
constexpr const char* mono = "/usr/share/fonts/truetype/liberation/LiberationMono-Regular.ttf";

struct Ink {
    int pixels = 0, left = 1000, top = 1000, right = -1, bottom = -1;
};

Ink ink_of(BITMAP* bitmap, int paper) {
    Ink ink;
    for (int y = 0; y < bitmap->h; ++y)
        for (int x = 0; x < bitmap->w; ++x)
            if (getpixel(bitmap, x, y) != paper) {
                ++ink.pixels;
                ink.left = std::min(ink.left, x);
                ink.top = std::min(ink.top, y);
                ink.right = std::max(ink.right, x);
                ink.bottom = std::max(ink.bottom, y);
            }
    return ink;
}

std::string every_character() {
    std::string text;
    for (int code = 0x20; code < 0x100; ++code)
        text += static_cast<char>(code);
    return text;
}

class TrueType : public testing::Test {
protected:
    void SetUp() override {
        test::start_library();
        ASSERT_TRUE(init_truetype());
    }
};

TEST_F(TrueType, RefusesWhatIsNoFont) {
    const test::ScratchFolder folder;
    folder.write("text.ttf", "no font at all");
    folder.write("empty.ttf", "");
    folder.write("cut.ttf", folder.read(sans).substr(0, 300));
    for (const char* name : {"text.ttf", "empty.ttf", "cut.ttf", "missing.ttf", "."})
        EXPECT_EQ(load_truetype_font(name), nullptr) << name;
}

TEST_F(TrueType, NoCharacterLeavesTheCell) {
    for (const char* file : {sans, mono})
        for (const int height : {1, 11, 12, 13, 14, 16, 20, 30}) {
            const auto font = load_truetype_font(file);
            ASSERT_TRUE(font);
            font->set_size(height);
            const BitmapPtr paper(create_bitmap(5000, height + 20));
            for (const bool smooth : {false, true}) {
                clear_bitmap(paper.get());
                const auto draw = smooth ? &TrueTypeFont::text_out_aa : &TrueTypeFont::text_out;
                (font.get()->*draw)(paper.get(), every_character(), 10, 10, makecol(255, 255, 255), -1);
                const Ink ink = ink_of(paper.get(), 0);
                EXPECT_GE(ink.left, 10) << file << height;
                EXPECT_GE(ink.top, 10) << file << height;
                EXPECT_LT(ink.bottom, 10 + height) << file << height;
                EXPECT_GE((ink.bottom - ink.top + 1) * 10, height * 8) << file << height; // the cell is used, too
            }
        }
}

TEST_F(TrueType, LengthFollowsAdvancesAndSpacing) {
    const auto font = load_truetype_font(sans);
    font->set_size(13);
    const int plain = font->text_length("Wim");
    EXPECT_GT(font->text_length("W"), font->text_length("i"));
    EXPECT_EQ(font->text_length(""), 0);
    font->set_extra_spacing(2);
    EXPECT_EQ(font->text_length("Wim"), plain + 6);
    font->set_fixed_advance(9);
    EXPECT_EQ(font->text_length("Wim"), 33);
    font->set_fixed_advance(0);
    font->set_extra_spacing(-100); // clamped; a length is never negative
    EXPECT_EQ(font->text_length("iii"), 0);
}

TEST_F(TrueType, BytesAreWindowsLatin1) {
    const auto font = load_truetype_font(sans);
    font->set_size(40);
    const int dash = font->text_length("\x97"), hyphen = font->text_length("-"); // em dash
    EXPECT_GT(dash, 2 * hyphen);
    EXPECT_EQ(font->text_length("\xC4"), font->text_length("A"));
    EXPECT_EQ(font->text_length("\t"), font->text_length(" "));
}

TEST_F(TrueType, HardTextHasOneColourAndFillsItsBox) {
    const auto font = load_truetype_font(mono);
    font->set_size(14);
    for (const int depth : {8, 15, 16, 24, 32}) {
        const BitmapPtr paper(create_bitmap_ex(depth, 60, 30));
        clear_to_color(paper.get(), 1);
        const int ink = depth == 8 ? 7 : makecol_depth(depth, 255, 128, 0);
        font->text_out(paper.get(), "Ag", 5, 5, ink, 2);
        int inked = 0, filled = 0, other = 0;
        for (int y = 0; y < 30; ++y)
            for (int x = 0; x < 60; ++x) {
                const int pixel = getpixel(paper.get(), x, y);
                inked += pixel == ink;
                filled += pixel == 2;
                other += pixel != ink && pixel != 1 && pixel != 2;
            }
        EXPECT_GT(inked, 20) << depth;
        EXPECT_EQ(inked + filled, font->text_length("Ag") * 14) << depth;
        EXPECT_EQ(other, 0) << depth;
    }
}

TEST_F(TrueType, SmoothTextLiesBetweenPaperAndInkInEveryField) {
    const auto font = load_truetype_font(sans);
    font->set_size(20);
    for (const int depth : {15, 16, 24, 32}) {
        const BitmapPtr paper(create_bitmap_ex(depth, 120, 30));
        const int background = makecol_depth(depth, 0, 100, 200);
        clear_to_color(paper.get(), background);
        font->text_out_aa(paper.get(), "Veldor", 2, 2, makecol_depth(depth, 255, 100, 0), -1);
        int mixed = 0;
        for (int y = 0; y < 30; ++y)
            for (int x = 0; x < 120; ++x) {
                const int pixel = getpixel(paper.get(), x, y);
                const int red = getr_depth(depth, pixel), blue = getb_depth(depth, pixel);
                EXPECT_NEAR(getg_depth(depth, pixel), 100, 8) << depth;
                EXPECT_NEAR(red * 200 / 255 + blue, 200, 16) << depth;
                mixed += red > 30 && red < 220;
            }
        EXPECT_GT(mixed, 40) << depth;
    }
}

TEST_F(TrueType, ClippingCutsAtEverySide) {
    const auto font = load_truetype_font(sans);
    font->set_size(20);
    const BitmapPtr whole(create_bitmap(100, 40)), clipped(create_bitmap(100, 40));
    clear_bitmap(whole.get());
    clear_bitmap(clipped.get());
    set_clip_rect(clipped.get(), 17, 9, 60, 17);
    for (BITMAP* target : {whole.get(), clipped.get()})
        for (const int x : {-40, 3, 80})
            font->text_out_aa(target, "Brontar", x, x / 8, makecol(255, 255, 255), -1);
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 100; ++x) {
            const bool inside = x >= 17 && x <= 60 && y >= 9 && y <= 17;
            EXPECT_EQ(getpixel(clipped.get(), x, y), inside ? getpixel(whole.get(), x, y) : 0) << x << "," << y;
        }
}

static_assert(mix_32(0x00FF0080, 0x0000FF80, 0) == 0x00FF0080 && mix_32(0x00FF0080, 0x0000FF80, 255) == 0x0000FF80);
static_assert(mix_32(0x000000, 0xFFFFFF, 128) == 0x808080 && mix_16(0xFFFF, 0, 128) == 0x7BEF &&
              mix_15(0, 0x7FFF, 0) == 0);

} // namespace
} // namespace vcc::platform
