#include "core/handles.h"
#include "folder_test.h"
#include "media/truetype.h"

#include <numeric>

namespace vcc::platform {
namespace {

class TrueType : public test::FolderTest {
protected:
    void SetUp() override {
        init_truetype();
        face = load_truetype_font("/usr/share/fonts/truetype/liberation/LiberationSans-Regular.ttf");
        ASSERT_TRUE(face);
        face->set_size(20);
    }
    std::unique_ptr<TrueTypeFont> face;
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

TEST_F(TrueType, TheCharactersOfWindowsLatin1StayInTheirCells) {
    std::string every_character(0x100 - 0x20, '\0');
    std::iota(every_character.begin(), every_character.end(), ' ');
    for (const int height : {1, 11, 12, 13, 14, 16, 20, 30}) {
        const BitmapPtr bitmap = paper(32, 5000, height + 20, 0);
        face->set_size(height);
        const int end = 10 + face->text_length(every_character);
        face->draw(bitmap.get(), every_character, 10, 10, 0xFFFFFF, false);
        face->draw(bitmap.get(), every_character, 10, 10, 0xFFFFFF, true);
        for_pixels(bitmap, [&](int x, int y, int pixel) {
            const bool in_box = x >= 10 && x < end && y >= 10 && y < 10 + height;
            EXPECT_TRUE(pixel == 0 || in_box) << height << " high: " << x << "," << y;
        });
    }
    EXPECT_GT(face->text_length("\x97"), 2 * face->text_length("-")) << "an em dash";
}

TEST_F(TrueType, SmoothTextLiesBetweenPaperAndInkAndIsClippedInEveryDepth) {
    face->draw(paper(32, 120, 30, 0).get(), "Veldor", 2, 2, 1, false); // both ways have glyphs of their own
    for (const int depth : {15, 16, 24, 32}) {
        const int back = makecol_depth(depth, 0, 100, 200), ink = makecol_depth(depth, 255, 100, 0);
        const BitmapPtr whole = paper(depth, 120, 30, back), clipped = paper(depth, 120, 30, back);
        set_clip_rect(clipped.get(), 15, 9, 40, 17);
        for (BITMAP* target : {whole.get(), clipped.get()})
            face->draw(target, "Veldor", 2, 2, ink, true);
        int mixed = 0;
        for_pixels(whole, [&](int x, int y, int pixel) {
            const int red = getr_depth(depth, pixel);
            EXPECT_NEAR(getg_depth(depth, pixel), 100, 8) << depth;
            EXPECT_NEAR(red * 200 / 255 + getb_depth(depth, pixel), 200, 16) << depth;
            mixed += red > 30 && red < 220;
            const bool inside = x >= 15 && x <= 40 && y >= 9 && y <= 17;
            EXPECT_EQ(getpixel(clipped.get(), x, y), inside ? pixel : back) << depth << ": " << x << "," << y;
        });
        EXPECT_GT(mixed, 40) << depth;
    }
}

} // namespace
} // namespace vcc::platform
