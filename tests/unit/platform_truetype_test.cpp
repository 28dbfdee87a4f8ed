#include "core/handles.h"
#include "folder_test.h"
#include "platform/truetype.h"
#include "platform/truetype_draw.h"

#include <algorithm>

namespace vcc::platform {
namespace {

constexpr const char* sans = "/usr/share/fonts/truetype/liberation/LiberationSans-Regular.ttf";
constexpr const char* mono = "/usr/share/fonts/truetype/liberation/LiberationMono-Regular.ttf";

class TrueType : public test::FolderTest {
protected:
    void SetUp() override { ASSERT_TRUE(init_truetype()); }
    static std::unique_ptr<TrueTypeFont> font(const char* file, int height) {
        auto loaded = load_truetype_font(file);
        loaded->set_size(height);
        return loaded;
    }
};

BitmapPtr paper(int depth, int width, int height, int colour) {
    BitmapPtr bitmap(create_bitmap_ex(depth, width, height));
    clear_to_color(bitmap.get(), colour);
    return bitmap;
}

template <typename Look>
void for_pixels(const BitmapPtr& bitmap, Look look) {
    for (int y = 0; y < bitmap->h; ++y)
        for (int x = 0; x < bitmap->w; ++x)
            look(x, y, getpixel(bitmap.get(), x, y));
}

TEST_F(TrueType, RefusesWhatIsNoFont) {
    folder.write("text.ttf", "no font at all");
    folder.write("empty.ttf", "");
    folder.write("cut.ttf", folder.read(sans).substr(0, 300));
    for (const char* name : {"text.ttf", "empty.ttf", "cut.ttf", "missing.ttf", "."})
        EXPECT_EQ(load_truetype_font(name), nullptr) << name;
}

TEST_F(TrueType, NoCharacterLeavesTheCell) {
    std::string every_character;
    for (int code = 0x20; code < 0x100; ++code)
        every_character += static_cast<char>(code);
    for (const char* file : {sans, mono})
        for (const int height : {1, 11, 12, 13, 14, 16, 20, 30})
            for (const auto draw : {&TrueTypeFont::text_out, &TrueTypeFont::text_out_aa}) {
                const BitmapPtr bitmap = paper(32, 5000, height + 20, 0);
                (font(file, height).get()->*draw)(bitmap.get(), every_character, 10, 10, 0xFFFFFF, -1);
                int left = 1000, top = 1000, bottom = -1;
                for_pixels(bitmap, [&](int x, int y, int pixel) {
                    if (pixel == 0)
                        return;
                    left = std::min(left, x);
                    top = std::min(top, y);
                    bottom = y;
                });
                EXPECT_GE(left, 10) << file << height;
                EXPECT_GE(top, 10) << file << height;
                EXPECT_LT(bottom, 10 + height) << file << height;
                EXPECT_GE((bottom - top + 1) * 10, height * 8) << file << height; // the cell is used, too
            }
}

TEST_F(TrueType, LengthFollowsAdvancesAndSpacing) {
    const auto face = font(sans, 40);
    const auto length = [&](const char* text) { return face->text_length(text); };
    EXPECT_GT(length("W"), length("i"));
    EXPECT_GT(length("\x97"), 2 * length("-")); // bytes are Windows Latin-1: an em dash
    EXPECT_EQ(length("\xC4"), length("A"));
    EXPECT_EQ(length("\t"), length(" "));
    const int plain = length("Wim");
    face->set_extra_spacing(2);
    EXPECT_EQ(length("Wim"), plain + 6);
    face->set_fixed_advance(9);
    EXPECT_EQ(length("Wim"), 33);
    face->set_fixed_advance(0);
    face->set_size(13);
    face->set_extra_spacing(-100); // clamped; a length is never negative
    EXPECT_EQ(length("iii"), 0);
}

TEST_F(TrueType, HardTextHasOneColourAndFillsItsBox) {
    const auto face = font(mono, 14);
    for (const int depth : {8, 15, 16, 24, 32}) {
        const BitmapPtr bitmap = paper(depth, 60, 30, 1);
        const int ink = depth == 8 ? 7 : makecol_depth(depth, 255, 128, 0);
        face->text_out(bitmap.get(), "Ag", 5, 5, ink, 2);
        int inked = 0, filled = 0, other = 0;
        for_pixels(bitmap, [&](int, int, int pixel) {
            inked += pixel == ink;
            filled += pixel == 2;
            other += pixel != ink && pixel != 1 && pixel != 2;
        });
        EXPECT_GT(inked, 20) << depth;
        EXPECT_EQ(inked + filled, face->text_length("Ag") * 14) << depth;
        EXPECT_EQ(other, 0) << depth;
    }
}

TEST_F(TrueType, SmoothTextLiesBetweenPaperAndInkInEveryField) {
    const auto face = font(sans, 20);
    for (const int depth : {15, 16, 24, 32}) {
        const BitmapPtr bitmap = paper(depth, 120, 30, makecol_depth(depth, 0, 100, 200));
        face->text_out(paper(depth, 120, 30, 0).get(), "Veldor", 2, 2, 1, -1); // both ways have glyphs of their own
        face->text_out_aa(bitmap.get(), "Veldor", 2, 2, makecol_depth(depth, 255, 100, 0), -1);
        int mixed = 0;
        for_pixels(bitmap, [&](int, int, int pixel) {
            const int red = getr_depth(depth, pixel);
            EXPECT_NEAR(getg_depth(depth, pixel), 100, 8) << depth;
            EXPECT_NEAR(red * 200 / 255 + getb_depth(depth, pixel), 200, 16) << depth;
            mixed += red > 30 && red < 220;
        });
        EXPECT_GT(mixed, 40) << depth;
    }
}

TEST_F(TrueType, ClippingCutsAtEverySide) {
    const auto face = font(sans, 20);
    const BitmapPtr whole = paper(32, 100, 40, 0), clipped = paper(32, 100, 40, 0);
    set_clip_rect(clipped.get(), 17, 9, 60, 17);
    for (BITMAP* target : {whole.get(), clipped.get()})
        for (const int x : {-40, 3, 80})
            face->text_out_aa(target, "Brontar", x, x / 8, 0xFFFFFF, -1);
    for_pixels(clipped, [&](int x, int y, int pixel) {
        const bool inside = x >= 17 && x <= 60 && y >= 9 && y <= 17;
        EXPECT_EQ(pixel, inside ? getpixel(whole.get(), x, y) : 0) << x << "," << y;
    });
}

static_assert(mix_32(0x00FF0080, 0x0000FF80, 0) == 0x00FF0080 && mix_32(0x00FF0080, 0x0000FF80, 255) == 0x0000FF80);
static_assert(mix_32(0x000000, 0xFFFFFF, 128) == 0x808080 && mix_16(0xFFFF, 0, 128) == 0x7BEF &&
              mix_15(0, 0x7FFF, 0) == 0);

} // namespace
} // namespace vcc::platform
