#include "platform/avi.h"
#include "platform/avi_header.h"
#include "support/allegro_none.h"
#include "support/avi_file.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <string>
#include <sys/stat.h>

namespace vcc::platform {
namespace {

using test::AviFile;

std::unique_ptr<AviFilm> opened(const test::ScratchFolder& folder, const std::string& bytes) {
    folder.write("film.avi", bytes);
    AviError error = AviError::none;
    auto film = open_avi("film.avi", error);
    EXPECT_EQ(film != nullptr, error == AviError::none);
    return film;
}

AviError error_of(const test::ScratchFolder& folder, const std::string& bytes) {
    folder.write("film.avi", bytes);
    AviError error = AviError::none;
    open_avi("film.avi", error);
    return error;
}

std::array<int, 3> pixel(const AviFrame& frame, int x, int row_from_top) {
    const int stride = static_cast<int>(frame.rows.size()) / frame.height;
    const auto* at = frame.rows.data() + (frame.height - 1 - row_from_top) * stride + x * frame.bits / 8;
    if (frame.bits == 16) {
        const int stored = at[0] | at[1] << 8;
        return {(stored >> 10 & 31) * 255 / 31, (stored >> 5 & 31) * 255 / 31, (stored & 31) * 255 / 31};
    }
    if (frame.bits == 8)
        at = frame.colour_table.data() + 4 * *at;
    return {at[2], at[1], at[0]};
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
    const struct {
        std::string bytes;
        AviError error;
    } cases[] = {
        {good, AviError::none},
        {"", AviError::bad_format},
        {"RIFF", AviError::bad_format},
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
    for (const auto& each : cases)
        EXPECT_EQ(read_avi_header(each.bytes).error, each.error) << &each - cases;
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

TEST(Avi, FramesComeByTimeForwardsAndBackwards) {
    const test::ScratchFolder folder;
    const auto film = opened(folder, numbered(50).rate(25, 1).bytes());
    ASSERT_TRUE(film);
    EXPECT_EQ(film->end_ms(), 2000);
    for (const int time_ms : {0, 39, 40, 40, 1000, 1960, 120, 1999, 0}) {
        const AviFrame* frame = film->frame_at(time_ms);
        ASSERT_TRUE(frame) << time_ms;
        EXPECT_EQ(pixel(*frame, 1, 1)[0], time_ms / 40) << time_ms;
        EXPECT_EQ(frame->number, time_ms / 40);
    }
    EXPECT_EQ(film->frame_at(2000), nullptr);
}

TEST(Avi, FilmsOfEveryDepthStandUpright) {
    // Three pixels wide, so that rows are padded: the top row is red, green, blue, the bottom row black.
    const std::string table = std::string("\0\0\0\0\0\0\xFF\0\0\xFF\0\0\xFF\0\0\0", 16) + std::string(1024 - 16, '\0');
    const struct {
        AviFile film;
        int bits;
    } cases[] = {
        {AviFile(3, 2, 8).colour_table(table).frame(std::string("\0\0\0\0\1\2\3\0", 8)), 8},
        {AviFile(3, 2, 8) // run lengths
             .colour_table(table)
             .compression(AviFile::number(1))
             .frame(std::string("\3\0\0\0\1\1\1\2\1\3\0\1", 12)),
         8},
        {AviFile(3, 2, 16).frame(std::string(8, '\0') + std::string("\0\x7C\xE0\x03\x1F\0\0\0", 8)), 16},
        {AviFile(3, 2, 24).frame(std::string(12, '\0') + std::string("\0\0\xFF\0\xFF\0\xFF\0\0\0\0\0", 12)), 24},
        {AviFile(3, 2, 32).frame(std::string(12, '\0') + std::string("\0\0\xFF\0\0\xFF\0\0\xFF\0\0\0", 12)), 32},
    };
    const test::ScratchFolder folder;
    for (const auto& each : cases) {
        const auto film = opened(folder, each.film.bytes());
        ASSERT_TRUE(film) << each.bits;
        const AviFrame* frame = film->frame_at(0);
        ASSERT_TRUE(frame) << each.bits;
        EXPECT_EQ(frame->bits, each.bits);
        for (int x = 0; x < 3; ++x) {
            std::array<int, 3> colour{};
            colour[static_cast<std::size_t>(x)] = 255;
            EXPECT_EQ(pixel(*frame, x, 0), colour) << each.bits;
            EXPECT_EQ(pixel(*frame, x, 1), (std::array{0, 0, 0})) << each.bits;
        }
    }
}

TEST(Avi, CompressedFilmsAreDecodedWhole) {
    const test::ScratchFolder folder;
    for (const char* codec : {"cinepak", "mjpeg", "mpeg4 -bf 2", "msvideo1", "rawvideo -pix_fmt yuv420p", "ffv1"}) {
        // Red above blue, green in the last second.
        const std::string command =
            std::string("ffmpeg -v quiet -y -f lavfi -i color=red:s=64x32:d=2,format=rgb24 -f lavfi -i "
                        "color=blue:s=64x32:d=2,format=rgb24 -f lavfi -i color=lime:s=64x64:d=1,format=rgb24 "
                        "-filter_complex '[0][1]vstack[a];[a][2]concat' -r 25 -c:v ") +
            codec + " film.avi";
        ASSERT_EQ(std::system(command.c_str()), 0) << codec;
        AviError error = AviError::other;
        const auto film = open_avi("film.avi", error);
        ASSERT_TRUE(film) << codec;
        EXPECT_NEAR(film->end_ms(), 3000, 80) << codec;
        for (const int time_ms : {0, 1000, 2500, 1500}) {
            const AviFrame* frame = film->frame_at(time_ms);
            ASSERT_TRUE(frame) << codec << time_ms;
            ASSERT_EQ(frame->rows.size(), static_cast<std::size_t>(64 * 64 * frame->bits / 8)) << codec;
            const auto top = pixel(*frame, 5, 3), bottom = pixel(*frame, 60, 60);
            if (time_ms == 2500) {
                EXPECT_GT(top[1], 200) << codec;
                EXPECT_GT(bottom[1], 200) << codec;
            } else {
                EXPECT_GT(top[0], 200) << codec;
                EXPECT_GT(bottom[2], 200) << codec;
                EXPECT_LT(top[1] + top[2] + bottom[0] + bottom[1], 120) << codec;
            }
        }
    }
}

TEST(Avi, UnopenableFilesGiveErrors) {
    const test::ScratchFolder folder;
    AviError error = AviError::none;
    ASSERT_EQ(mkfifo("pipe.avi", 0600), 0);
    for (const char* name : {"missing.avi", ".", "pipe.avi", "http://localhost/film.avi"}) {
        EXPECT_EQ(open_avi(name, error), nullptr) << name;
        EXPECT_EQ(error, AviError::file) << name;
    }
    EXPECT_EQ(error_of(folder, AviFile(2, 2, 24).audio("").bytes()), AviError::audio_format);
    EXPECT_EQ(error_of(folder, AviFile(2, 2, 24).compression("?!?!").frame("x").bytes()), AviError::decompressor);
}

TEST(Avi, DamagedFilmsEndWhereTheirFramesEnd) {
    const test::ScratchFolder folder;
    const std::string whole = numbered(40).bytes();
    const auto film = opened(folder, whole.substr(0, whole.size() * 3 / 5));
    ASSERT_TRUE(film);
    EXPECT_TRUE(film->frame_at(200));
    EXPECT_EQ(film->frame_at(1500), nullptr);
    EXPECT_LT(film->end_ms(), 1500);
    EXPECT_TRUE(film->frame_at(200));

    const auto endless = opened(folder, numbered(5).length(0xFFFFFFFF).bytes());
    ASSERT_TRUE(endless);
    EXPECT_EQ(endless->frame_at(1000000), nullptr);
    EXPECT_EQ(endless->end_ms(), 200);
}

TEST(Avi, NoDamageCrashesOrHangs) {
    const test::ScratchFolder folder;
    std::string whole = numbered(12).bytes();
    const auto start = std::chrono::steady_clock::now();
    std::uint32_t random = 1;
    for (int round = 0; round < 400; ++round) {
        std::string bytes =
            round % 2 == 0 ? whole.substr(0, whole.size() * static_cast<std::size_t>(round) / 400) : whole;
        for (int change = 0; change < 6 && !bytes.empty(); ++change) {
            random = random * 1664525 + 1013904223;
            bytes[(random >> 8) % std::min<std::size_t>(bytes.size(), 320)] = static_cast<char>(random >> 24);
        }
        folder.write("film.avi", bytes);
        AviError error = AviError::none;
        const auto film = open_avi("film.avi", error);
        for (const int time_ms : {0, 300, 100, 0x7FFFFFFF}) {
            const AviFrame* frame = film ? film->frame_at(time_ms) : nullptr;
            const auto needed = frame ? static_cast<std::size_t>(frame->width * frame->height * frame->bits / 8) : 0;
            EXPECT_GE(frame ? frame->rows.size() : 0, needed);
        }
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

} // namespace
} // namespace vcc::platform
