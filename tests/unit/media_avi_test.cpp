#include "folder_test.h"
#include "media/avi.h"
#include "support/avi_file.h"

#include <algorithm>
#include <climits>

#include <sys/stat.h>

namespace vcc::platform {
namespace {

using test::AviFile;

class Avi : public test::FolderTest {
protected:
    OpenedFilm open(const std::string& bytes) {
        folder.write("film.avi", bytes);
        return open_avi("film.avi");
    }
};

// Frames of 2 x 2 pixels at 24 bits, each filled with its number.
std::vector<std::string> numbered(int count) {
    std::vector<std::string> frames;
    for (int i = 0; i < count; ++i)
        frames.emplace_back(16, static_cast<char>(i));
    return frames;
}

TEST_F(Avi, FilmsThatCannotBeShownAreRefused) {
    const std::string good = AviFile{.frames = numbered(1)}.bytes();
    const std::pair<std::string, AviError> cases[] = {
        {std::string(good).insert(12, AviFile::chunk("JUNK", "odd")), AviError::none}, // a pad byte is passed over
        {"RIFF", AviError::bad_format},
        {good.substr(0, 130), AviError::no_video},
        {good.substr(0, 200), AviError::video_format},
        {AviFile{.width = 0}.bytes(), AviError::video_format},
        {AviFile{.width = 4097}.bytes(), AviError::video_format},
        {AviFile{.height = INT_MIN}.bytes(), AviError::video_format},
        {AviFile{.width = 0, .audio_format = "short"}.bytes(), AviError::audio_format},
        {AviFile{.compression = "?!?!", .frames = {"x"}}.bytes(), AviError::decompressor},
    };
    for (const auto& [bytes, expected] : cases)
        EXPECT_EQ(open(bytes).error, expected) << "film of " << bytes.size() << " bytes";
}

TEST_F(Avi, FramesComeByTimeForwardsAndBackwards) {
    ASSERT_TRUE(open(AviFile{.frames = numbered(1)}.bytes()).film);
    release_film_decoder(); // another film may follow
    const auto film = open(AviFile{.rate = 30000, .scale = 1001, .frames = numbered(50)}.bytes()).film;
    ASSERT_TRUE(film);
    EXPECT_EQ(film->end_ms(), 1668);
    for (const auto& [time_ms, number] : {std::pair(0, 0), {33, 0}, {34, 1}, {1001, 30}, {1000, 29}, {1668, 49}}) {
        const AviFrame* frame = film->frame_at(time_ms);
        ASSERT_TRUE(frame) << time_ms;
        EXPECT_EQ(frame->number, number) << time_ms;
        EXPECT_EQ(frame->row(0)[0], number) << time_ms;
    }
    EXPECT_EQ(film->frame_at(1669), nullptr);
}

TEST_F(Avi, FilmsOfEveryDepthKeepTheirRowsAndColours) {
    // Three pixels wide: rows are padded.
    const std::pair<int, std::string> cases[] = {
        {8, {"abc\0def\0", 8}},
        {16, {"abcdef\0\0ghijkl\0\0", 16}},
        {32, "abcdefghijklmnopqrstuvwx"},
    };
    for (const auto& [bits, rows] : cases) {
        const AviFile file{.width = 3, .bits = bits, .colour_table = std::string(1024, '\x7F'), .frames = {rows}};
        const auto film = open(file.bytes()).film;
        const AviFrame* frame = film ? film->frame_at(0) : nullptr;
        ASSERT_TRUE(frame) << bits;
        const std::size_t used = static_cast<std::size_t>(bits) * 3 / 8;
        EXPECT_TRUE(std::ranges::equal(frame->row(1), rows.substr(0, used))) << bits; // stored bottom row first
        EXPECT_TRUE(std::ranges::equal(frame->row(0), rows.substr(rows.size() / 2, used))) << bits;
        EXPECT_TRUE(bits != 8 || frame->colour_table[4] == 0x7F);
    }
}

#ifndef _WIN32 // pipes, and the command that makes films
TEST_F(Avi, CompressedFilmsAreDecodedWholeAndAPipeIsNotWaitedFor) {
    ASSERT_EQ(mkfifo("pipe.avi", 0600), 0);
    EXPECT_EQ(open_avi("pipe.avi").film, nullptr);

    // Red above blue, green in the last second.
    const std::string draw = "color=red:s=64x64:d=3,drawbox=y=32:c=blue:t=fill,drawbox=c=lime:t=fill:enable=gte(t\\,2)";
    for (const char* codec : {"rawvideo -pix_fmt yuv420p", "mjpeg", "mpeg4 -bf 2"}) {
        const std::string command = "ffmpeg -v quiet -y -f lavfi -i '" + draw + "' -c:v " + codec + " film.avi";
        ASSERT_EQ(std::system(command.c_str()), 0) << codec;
        const auto film = open_avi("film.avi").film;
        for (const int time_ms : {0, 2500, 1500}) {
            const AviFrame* frame = film ? film->frame_at(time_ms) : nullptr;
            ASSERT_TRUE(frame && frame->height == 64 && frame->bits == 32) << codec << time_ms;
            const auto top = frame->row(0), bottom = frame->row(63); // blue, green, red
            EXPECT_GT(top[time_ms == 2500 ? 1 : 2], 200) << codec << time_ms;
            EXPECT_GT(bottom[time_ms == 2500 ? 1 : 0], 200) << codec << time_ms;
        }
    }
}
#endif

TEST_F(Avi, DamagedFilmsKeepTheirTimes) {
    const auto shown = [](const OpenedFilm& opened, int time_ms) {
        const AviFrame* frame = opened.film ? opened.film->frame_at(time_ms) : nullptr;
        return frame ? frame->row(0)[0] : -1;
    };
    std::vector<std::string> gap = numbered(20);
    std::fill_n(gap.begin() + 5, 10, "");
    const OpenedFilm holed = open(AviFile{.frames = gap}.bytes());
    for (const auto& [time_ms, number] : {std::pair(160, 4), {200, 4}, {599, 4}, {600, 15}, {680, 17}, {400, 4}})
        EXPECT_EQ(shown(holed, time_ms), number) << time_ms;

    const auto cut = [](const std::string& whole) { return whole.substr(0, whole.size() * 3 / 5); };
    const OpenedFilm short_one = open(cut(AviFile{.frames = numbered(40)}.bytes()));
    EXPECT_EQ(shown(short_one, 1590), shown(short_one, 1480)); // the last frame stays until the header's end
    EXPECT_LT(shown(short_one, 1590), 37);
    EXPECT_EQ(shown(short_one, 1600), -1);

    const OpenedFilm endless = open(cut(AviFile{.told_length = 0xFFFFFFFF, .frames = numbered(40)}.bytes()));
    EXPECT_EQ(shown(endless, 1500), -1);
    EXPECT_LT(endless.film->end_ms(), 1500);
    EXPECT_EQ(shown(endless, 200), 5);
}

} // namespace
} // namespace vcc::platform
