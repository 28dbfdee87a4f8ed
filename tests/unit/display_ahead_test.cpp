// Pictures that are read ahead on a thread of their own.
#include "display/pictures_ahead.h"
#include "support/allegro_none.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace vcc {
namespace {

TEST(PicturesAhead, ComeInTheirOrderAndMayBeLeftOut) {
    test::start_library();
    const test::ScratchFolder folder;
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
