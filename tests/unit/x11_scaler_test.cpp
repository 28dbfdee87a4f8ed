#include "x11/changed_parts.h"
#include "x11/picture_place.h"
#include "x11/reminder.h"
#include "x11/scaler.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>

namespace vcc::platform {
namespace {

constexpr PixelFormat bytes4{4, 0xFF0000, 0xFF00, 0xFF}, fields565{2, 0xF800, 0x7E0, 0x1F},
    fields555{2, 0x7C00, 0x3E0, 0x1F};

/// A picture in memory of its own.
struct Image {
    Image(Size extent, PixelFormat pixels)
        : size(extent), format(pixels), data(static_cast<std::size_t>(extent.width * extent.height * format.bytes)) {}
    PixelRows rows() { return {data.data(), std::ptrdiff_t{size.width} * format.bytes}; }
    std::uint32_t pixel(int x, int y) const {
        std::uint32_t value = 0;
        std::memcpy(&value, data.data() + (y * size.width + x) * format.bytes, static_cast<std::size_t>(format.bytes));
        return value;
    }
    /// 0 to 1.
    double channel(int x, int y, std::uint32_t mask) const { return static_cast<double>(pixel(x, y) & mask) / mask; }

    Size size;
    PixelFormat format;
    std::vector<std::uint8_t> data;
};

Image random_image(Size size, PixelFormat format) {
    Image image(size, format);
    std::mt19937 random(7);
    for (std::uint8_t& byte : image.data)
        byte = static_cast<std::uint8_t>(random() % 3 == 0 ? random() : random() % 2 * 255);
    return image;
}

/// How much of [at, at + 1) pixels of `shown` lies on pixel `source` of `picture`, as a share.
double share(int at, int source, int shown, int picture) {
    const double extent = static_cast<double>(picture) / shown;
    return std::max(0.0, std::min((at + 1) * extent, source + 1.0) - std::max(at * extent, 1.0 * source)) / extent;
}

/// In double precision.
double wanted_channel(const Image& picture, Size shown, int x, int y, std::uint32_t mask) {
    double sum = 0;
    for (int sy = 0; sy < picture.size.height; ++sy) {
        const double down = share(y, sy, shown.height, picture.size.height);
        for (int sx = 0; down > 0 && sx < picture.size.width; ++sx)
            sum += down * share(x, sx, shown.width, picture.size.width) * picture.channel(sx, sy, mask);
    }
    return sum;
}

TEST(Scaler, EachShownPixelHasTheSharesThatItCovers) {
    constexpr Size size{40, 30};
    for (const Size to : {Size{40, 30}, Size{120, 90}, Size{144, 108}, Size{41, 31}, Size{20, 15}, Size{39, 30},
                          Size{40, 31}, Size{45, 29}, Size{7, 5}, Size{1, 1}})
        for (const PixelFormat format : {bytes4, fields565, fields555}) {
            Image picture = random_image(size, format);
            Image shown(to, format);
            Scaler(size, to, format).scale(picture.rows(), shown.rows(), {0, 0, to.width, to.height});
            const bool whole_step = to.width % size.width == 0 && to.width / size.width * size.height == to.height;
            const double level = 255.0 / (format.bytes == 2 ? 31 : 255);
            double worst = 0, sum = 0; // of 255
            for (int y = 0; y < to.height; ++y)
                for (int x = 0; x < to.width; ++x)
                    for (const std::uint32_t mask : {format.red, format.green, format.blue}) {
                        const double more = 255 * (shown.channel(x, y, mask) - wanted_channel(picture, to, x, y, mask));
                        worst = std::max(worst, std::abs(more));
                        sum += more;
                    }
            const double mean = sum / (3.0 * to.width * to.height);
            EXPECT_LE(worst, whole_step ? 1e-9 : format.bytes == 4 ? 2 : 2 + level / 2) << to.width;
            EXPECT_LT(std::abs(mean), format.bytes == 4 ? 0.25 : level / 2) << to.width << " wide: darker or lighter";
        }
}

TEST(Scaler, AnAreaIsAsInTheWholeAndTouchesNothingElse) {
    constexpr Size size{40, 30};
    for (const PixelFormat format : {bytes4, fields565})
        for (const Size to : {Size{80, 60}, Size{72, 54}, Size{33, 25}}) {
            Image picture = random_image(size, format);
            const Scaler scaler(size, to, format);
            Image whole(to, format);
            scaler.scale(picture.rows(), whole.rows(), {0, 0, to.width, to.height});
            for (const Area changed : {Area{0, 0, 1, 1}, Area{13, 7, 22, 20}, Area{39, 29, 40, 30}}) {
                const Area area = shown_area(changed, to, size);
                Image part(to, format);
                scaler.scale(picture.rows(), part.rows(), area);
                for (int y = 0; y < to.height; ++y)
                    for (int x = 0; x < to.width; ++x) {
                        const bool inside = area.x1 <= x && x < area.x2 && area.y1 <= y && y < area.y2;
                        ASSERT_EQ(part.pixel(x, y), inside ? whole.pixel(x, y) : 0) << x << ", " << y;
                    }
                Image other = picture, other_whole(to, format), mended = whole;
                for (int y = changed.y1; y < changed.y2; ++y)
                    for (int at = changed.x1 * format.bytes; at < changed.x2 * format.bytes; ++at)
                        other.data[static_cast<std::size_t>(y * size.width * format.bytes + at)] ^= 0xFF;
                scaler.scale(other.rows(), other_whole.rows(), {0, 0, to.width, to.height});
                scaler.scale(other.rows(), mended.rows(), area);
                EXPECT_EQ(mended.data, other_whole.data) << "the area lacks some of what has changed";
            }
        }
}

TEST(PicturePlace, KeepsTheAspectInTheMiddle) {
    constexpr Size picture{800, 600};
    struct Row {
        Size window;
        Fit fit;
        Area place;
    };
    for (const auto& [window, fit, place] :
         {Row{{1300, 1000}, Fit::aspect, {0, 12, 1300, 987}}, Row{{1920, 1080}, Fit::aspect, {240, 0, 1680, 1080}},
          Row{{3840, 2160}, Fit::whole_steps, {720, 180, 3120, 1980}},
          Row{{1920, 1080}, Fit::whole_steps, {560, 240, 1360, 840}},
          Row{{400, 400}, Fit::whole_steps, {0, 50, 400, 350}}, Row{{1, 900}, Fit::aspect, {0, 449, 1, 450}}})
        EXPECT_EQ(place_picture(window, picture, fit), place) << window.width << " x " << window.height;
}

TEST(PicturePlace, ANewWindowTakesFourFifthsOfTheRoom) {
    struct Row {
        Size room;
        double desktop_scale;
        int aspect_width, whole_width;
    };
    for (const auto& [room, desktop_scale, aspect_width, whole_width] : {Row{{2000, 1500}, 1, 1600, 1600},
                                                                         {{1999, 1500}, 1, 800, 800},
                                                                         {{640, 480}, 2, 800, 800},
                                                                         {{7680, 4320}, 1, 4000, 4000},
                                                                         {{2560, 1440}, 1.5, 1200, 800},
                                                                         {{2560, 1440}, 3, 1536, 800}}) {
        EXPECT_EQ(first_size(room, {800, 600}, desktop_scale, Fit::aspect).width, aspect_width) << room.width;
        EXPECT_EQ(first_size(room, {800, 600}, desktop_scale, Fit::whole_steps).width, whole_width) << room.width;
    }
}

TEST(PicturePlace, EveryPixelThatIsPointedAtIsFoundAgain) {
    for (int shown = 800; shown <= 4000; shown += shown < 830 ? 1 : 37)
        for (int at = 0; at < 800; ++at)
            ASSERT_EQ(picture_pixel(shown_pixel(at, shown, 800), shown, 800), at) << shown;
    for (const auto& [at, pixel] : {std::pair{-1, 0}, {-500, 0}, {0, 0}, {1439, 799}, {1440, 799}, {5000, 799}})
        EXPECT_EQ(picture_pixel(at, 1440, 800), pixel);
}

TEST(ShownPicture, TakesWhatHasChangedOnce) {
    constexpr Size size{100, 40};
    constexpr Area all{0, 0, 100, 40};
    Image picture(size, bytes4); // black, like the memory of a picture never shown
    ShownPicture shown;
    shown.reset(size, 4);
    EXPECT_EQ(shown.take_changes(picture.rows(), {10, 10, 20, 20}), (std::vector{Area{10, 10, 20, 20}}));
    EXPECT_EQ(shown.take_changes(picture.rows(), all), std::vector{all});
    EXPECT_TRUE(shown.take_changes(picture.rows(), all).empty());

    const auto change = [&](int x, int y) { picture.data[static_cast<std::size_t>((y * 100 + x) * 4 + 1)] ^= 1; };
    change(40, 5);
    change(50, 17);
    change(99, 39);
    EXPECT_TRUE(shown.take_changes(picture.rows(), {0, 0, 30, 40}).empty());
    EXPECT_EQ(shown.take_changes(picture.rows(), {35, 3, 100, 40}),
              (std::vector{Area{35, 3, 64, 32}, Area{96, 32, 100, 40}}));
    EXPECT_TRUE(shown.take_changes(picture.rows(), {-5, -5, 900, 900}).empty());
}

TEST(ShownPicture, AreasAreJoinedWhenThatCostsLittle) {
    std::vector<Area> areas;
    add_area(areas, {0, 0, 10, 10});
    add_area(areas, {0, 10, 10, 20});
    add_area(areas, {5, 5, 5, 9});
    EXPECT_EQ(areas, (std::vector{Area{0, 0, 10, 20}}));
    for (int i = 0; i < 50; ++i)
        add_area(areas, {100 + 30 * i, 100, 101 + 30 * i, 101});
    EXPECT_LE(areas.size(), 16U);
}

TEST(PicturePlace, AWindowComesBackWhereItIsSeen) {
    const Area desktop{0, 0, 1920, 1080}, room{0, 30, 1920, 1080};
    for (const auto& [wanted, place] : {std::pair(Area{100, 200, 1100, 900}, Area{100, 200, 1100, 900}),
                                        {{1500, 200, 2300, 800}, {1500, 200, 2300, 800}}, // half of it
                                        {{1600, 200, 2400, 800}, {560, 255, 1360, 855}},
                                        {{3000, 200, 3800, 800}, {560, 255, 1360, 855}}, // of a monitor that is gone
                                        {{0, 0, 2560, 1400}, {0, 0, 1920, 1050}}})
        EXPECT_EQ(fitted_place(wanted, room, desktop), place) << wanted.x1 << ", " << wanted.x2;
}

TEST(Reminder, ShowsAgainTwiceAfterTheLatestDrawing) {
    const Reminder::Clock::time_point start{};
    const auto due = [&](Reminder& reminder, int ms) { return reminder.due(start + std::chrono::milliseconds(ms)); };
    Reminder reminder;
    EXPECT_FALSE(due(reminder, 5000)) << "nothing was drawn";
    reminder.drawn(start);
    reminder.drawn(start + std::chrono::milliseconds(200));
    for (const auto& [ms, wanted] :
         {std::pair(449, false), {450, true}, {460, false}, {1199, false}, {1200, true}, {1210, false}, {9000, false}})
        EXPECT_EQ(due(reminder, ms), wanted) << ms;
}

} // namespace
} // namespace vcc::platform
