#include "folder_test.h"
#include "platform/avi.h"
#include "platform/avi_header.h"
#include "support/avi_file.h"

#include <sys/stat.h>

namespace vcc::platform {
namespace {

using test::AviFile;

class Avi : public test::FolderTest {
protected:
    std::unique_ptr<AviFilm> open(const std::string& bytes, AviError expected = AviError::none) const {
        folder.write("film.avi", bytes);
        AviError error = AviError::other;
        auto film = open_avi("film.avi", error);
        EXPECT_EQ(error, expected);
        EXPECT_EQ(film != nullptr, error == AviError::none);
        return film;
    }
};

/// The colours from the left of a row on, a letter each: r, g and b are clear, k is black, everything else is "?".
std::string colours(const AviFrame& frame, int row_from_top, int count) {
    const int stride = static_cast<int>(frame.rows.size()) / frame.height;
    std::string letters;
    for (int x = 0; x < count; ++x) {
        const auto* at = frame.rows.data() + (frame.height - 1 - row_from_top) * stride + x * frame.bits / 8;
        int red = 0, green = 0, blue = 0;
        if (frame.bits == 16) {
            const int stored = at[0] | at[1] << 8;
            red = stored >> 7 & 0xF8, green = stored >> 2 & 0xF8, blue = stored << 3 & 0xF8;
        } else {
            const std::uint8_t* const entry = frame.bits == 8 ? frame.colour_table.data() + 4 * *at : at;
            red = entry[2], green = entry[1], blue = entry[0];
        }
        const auto level = [](int value) { return value > 200 ? 'x' : value < 60 ? '.' : '?'; };
        const std::string levels{level(red), level(green), level(blue)};
        letters += levels == "x.." ? 'r' : levels == ".x." ? 'g' : levels == "..x" ? 'b' : levels == "..." ? 'k' : '?';
    }
    return letters;
}

// A film of `count` frames of 2 x 2 pixels at 24 bits, each filled with its number.
AviFile numbered(int count) {
    AviFile film(2, 2, 24);
    for (int i = 0; i < count; ++i)
        film.frame(std::string(16, static_cast<char>(i)));
    return film;
}

TEST(AviHeader, FailuresHaveTheirOwnCodes) {
    const std::string good = numbered(1).bytes();
    const std::pair<std::string, AviError> cases[] = {
        {good, AviError::none},
        {std::string(good).insert(12, AviFile::chunk("JUNK", "odd")), AviError::none}, // a pad byte is passed over
        {"", AviError::bad_format},
        {std::string(1000, 'x'), AviError::bad_format},
        {good.substr(0, 20), AviError::bad_format},
        {good.substr(0, 100), AviError::no_video},
        {AviFile(2, 2, 24).without_video().bytes(), AviError::no_video},
        {AviFile(2, 2, 24).audio("").bytes(), AviError::audio_format},
        {AviFile(2, 2, 24).audio("").without_video().bytes(), AviError::audio_format},
        {AviFile(0, 2, 24).bytes(), AviError::video_format},
        {AviFile(4097, 2, 24).bytes(), AviError::video_format},
        {AviFile(2, static_cast<int>(0x80000000), 24).bytes(), AviError::video_format},
    };
    for (const auto& [bytes, error] : cases)
        EXPECT_EQ(read_avi_header(bytes).error, error) << "film of " << bytes.size() << " bytes";
    for (std::size_t length = 0; length < good.size(); ++length) // no length is read beyond
        read_avi_header(std::string(good, 0, length));
}

TEST(AviHeader, FramesHaveTheirTimes) {
    AviHeader header;
    header.scale = 1001;
    header.rate = 30000;
    EXPECT_EQ(avi_frame_time_ms(header, 300), 10010);
    EXPECT_EQ(avi_frame_number(header, 10009), 299);
    EXPECT_EQ(avi_frame_number(header, 10010), 300);
    EXPECT_EQ(avi_frame_time_ms(header, std::int64_t{1} << 60), 0x7FFFFFFF);
    header.rate = header.scale = 0xFFFFFFFF;
    EXPECT_EQ(avi_frame_number(header, 0x7FFFFFFF), 2147483);
}

TEST_F(Avi, FramesComeByTimeForwardsAndBackwards) {
    const auto film = open(numbered(50).rate(25, 1).bytes());
    ASSERT_TRUE(film);
    EXPECT_EQ(film->end_ms(), 2000);
    for (const int time_ms : {0, 39, 40, 40, 1000, 1960, 120, 1999, 0}) {
        const AviFrame* frame = film->frame_at(time_ms);
        ASSERT_TRUE(frame) << time_ms;
        EXPECT_EQ(frame->number, time_ms / 40);
        EXPECT_EQ(frame->rows[0], frame->number) << time_ms;
    }
    EXPECT_EQ(film->frame_at(2000), nullptr);
}

TEST_F(Avi, FilmsOfEveryDepthStandUpright) {
    // Three pixels wide, so that rows are padded: the top row is red, green, blue, the bottom row black.
    const std::string table = std::string("\0\0\0\0\0\0\xFF\0\0\xFF\0\0\xFF\0\0\0", 16) + std::string(1024 - 16, '\0');
    const std::string run_lengths("\3\0\0\0\1\1\1\2\1\3\0\1", 12);
    const std::pair<int, AviFile> cases[] = {
        {8, AviFile(3, 2, 8).colour_table(table).frame(std::string("\0\0\0\0\1\2\3\0", 8))},
        {8, AviFile(3, 2, 8).colour_table(table).compression(AviFile::number(1)).frame(run_lengths)},
        {16, AviFile(3, 2, 16).frame(std::string(8, '\0') + std::string("\0\x7C\xE0\x03\x1F\0\0\0", 8))},
        {24, AviFile(3, 2, 24).frame(std::string(12, '\0') + std::string("\0\0\xFF\0\xFF\0\xFF\0\0\0\0\0", 12))},
        {32, AviFile(3, 2, 32).frame(std::string(12, '\0') + std::string("\0\0\xFF\0\0\xFF\0\0\xFF\0\0\0", 12))},
    };
    for (const auto& [bits, file] : cases) {
        const auto film = open(file.bytes());
        const AviFrame* frame = film ? film->frame_at(0) : nullptr;
        ASSERT_TRUE(frame) << bits;
        EXPECT_EQ(frame->bits, bits);
        EXPECT_EQ(colours(*frame, 0, 3) + colours(*frame, 1, 3), "rgbkkk") << bits;
    }
}

TEST_F(Avi, CompressedFilmsAreDecodedWhole) {
    for (const char* codec : {"cinepak", "mjpeg", "mpeg4 -bf 2", "msvideo1", "rawvideo -pix_fmt yuv420p", "ffv1"}) {
        // Red above blue, green in the last second.
        const std::string command =
            std::string("ffmpeg -v quiet -y -f lavfi -i color=red:s=64x32:d=2,format=rgb24 -f lavfi -i "
                        "color=blue:s=64x32:d=2,format=rgb24 -f lavfi -i color=lime:s=64x64:d=1,format=rgb24 "
                        "-filter_complex '[0][1]vstack[a];[a][2]concat' -r 25 -c:v ") +
            codec + " film.avi";
        ASSERT_EQ(std::system(command.c_str()), 0) << codec;
        const auto film = open(folder.read("film.avi"));
        ASSERT_TRUE(film) << codec;
        EXPECT_NEAR(film->end_ms(), 3000, 80) << codec;
        for (const int time_ms : {0, 1000, 2500, 1500}) {
            const AviFrame* frame = film->frame_at(time_ms);
            ASSERT_TRUE(frame) << codec << time_ms;
            ASSERT_EQ(frame->rows.size(), static_cast<std::size_t>(64 * 64 * frame->bits / 8)) << codec;
            EXPECT_EQ(colours(*frame, 3, 1) + colours(*frame, 60, 1), time_ms == 2500 ? "gg" : "rb") << codec;
        }
    }
}

TEST_F(Avi, UnopenableFilesGiveErrors) {
    ASSERT_EQ(mkfifo("pipe.avi", 0600), 0);
    for (const char* name : {"missing.avi", ".", "pipe.avi", "http://localhost/film.avi"}) {
        AviError error = AviError::none;
        EXPECT_EQ(open_avi(name, error), nullptr) << name;
        EXPECT_EQ(error, AviError::file) << name;
    }
    open(AviFile(2, 2, 24).audio("").bytes(), AviError::audio_format);
    open(AviFile(2, 2, 24).compression("?!?!").frame("x").bytes(), AviError::decompressor);
}

TEST_F(Avi, DamagedFilmsEndWhereTheirFramesEnd) {
    const std::string whole = numbered(40).bytes();
    const auto film = open(whole.substr(0, whole.size() * 3 / 5));
    ASSERT_TRUE(film);
    EXPECT_TRUE(film->frame_at(200));
    EXPECT_EQ(film->frame_at(1500), nullptr);
    EXPECT_LT(film->end_ms(), 1500);
    EXPECT_TRUE(film->frame_at(200));

    const auto endless = open(numbered(5).length(0xFFFFFFFF).bytes());
    ASSERT_TRUE(endless);
    EXPECT_EQ(endless->frame_at(1000000), nullptr);
    EXPECT_EQ(endless->end_ms(), 200);

    for (std::size_t size = 0; size < whole.size(); size += 12) { // cut anywhere
        folder.write("film.avi", whole.substr(0, size));
        AviError error = AviError::other;
        const auto cut = open_avi("film.avi", error);
        EXPECT_EQ(cut != nullptr, error == AviError::none) << size;
        EXPECT_TRUE(cut == nullptr || cut->frame_at(0) == nullptr || cut->frame_at(0)->rows.size() == 16) << size;
    }
}

} // namespace
} // namespace vcc::platform
