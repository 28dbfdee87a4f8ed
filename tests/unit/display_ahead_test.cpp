// Pictures that are read ahead on a thread of their own.
#include "display/pictures_ahead.h"
#include "support/allegro_none.h"

#include <gtest/gtest.h>

namespace vcc {
namespace {

using test::ScratchFolder;

void make_picture(const std::string& name, int width, int height, int depth = 24) {
    test::start_library();
    const BitmapPtr picture(create_bitmap_ex(depth, width, height));
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            putpixel(picture.get(), x, y, (x * 48271 + y / 3 * 69621) % (depth == 24 ? 0xFFFFFF : 256));
    PALETTE palette{};
    save_pcx(name.c_str(), picture.get(), palette);
}

TEST(PicturesAhead, ComeInTheirOrderAndMayBeLeftOut) {
    const ScratchFolder folder;
    std::vector<std::string> paths;
    for (int width = 1; width <= 6; ++width) {
        paths.push_back("Picture" + std::to_string(width) + ".pcx");
        make_picture("picture" + std::to_string(width) + ".pcx", width, 4); // found whatever its letters' case
    }
    make_picture("palette.pcx", 9, 9, 8);
    folder.write("broken.pcx", folder.read("picture6.pcx").substr(0, 130));
    paths.insert(paths.begin() + 1, {"missing.pcx", "palette.pcx", "broken.pcx"});
    read_pictures_ahead(paths);
    read_pictures_ahead({"other.pcx"}); // pictures are left: nothing happens

    struct Row {
        const char* path;
        int width; ///< 0: nothing comes
    };
    for (const auto& [path, width] : {Row{"Picture1.pcx", 1},
                                      {"missing.pcx", 0},
                                      {"broken.pcx", 0},
                                      {"palette.pcx", 0}, // had been dropped
                                      {"Picture2.pcx", 2},
                                      {"Picture2.pcx", 0},
                                      {"other.pcx", 0},
                                      {"Picture5.pcx", 5},
                                      {"Picture4.pcx", 0}}) {
        const auto picture = take_picture(path);
        EXPECT_EQ(picture ? picture->header.width : 0, width) << path;
    }
    EXPECT_EQ(load_picture("Picture4.pcx")->w, 4); // read now
    EXPECT_EQ(load_picture("Picture6.pcx")->w, 6);

    read_pictures_ahead({"picture1.pcx", "picture2.pcx"}); // all were taken: the next list begins
    stop_reading_ahead();
    EXPECT_FALSE(take_picture("picture1.pcx"));
}

TEST(PicturesAhead, MoreThanMayWaitAllCome) {
    const ScratchFolder folder;
    make_picture("large.pcx", 2000, 1000);
    std::vector<std::string> paths;
    for (int i = 0; i < 9; ++i) { // 54 MB of samples
        paths.push_back("large" + std::to_string(i) + ".pcx");
        std::filesystem::create_hard_link("large.pcx", paths.back());
    }
    read_pictures_ahead(paths);
    for (const std::string& path : paths)
        EXPECT_TRUE(take_picture(path)) << path;
}

} // namespace
} // namespace vcc
