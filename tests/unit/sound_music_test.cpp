#include "folder_test.h"
#include "sound/music.h"
#include "sound/sound.h"
#include "support/wav_file.h"

#include <algorithm>
#include <random>

namespace {

constexpr std::size_t half_frames = 131072;

/// The library's stream, played half by half by the tests: it hands out the half that is not playing, first both.
AUDIOSTREAM device;
std::string halves[2];
int playing_half = 0;
std::string heard;
bool voice_runs = false; ///< the library's view: it starts a stopped voice when it gets a buffer back

} // namespace

extern "C" {
AUDIOSTREAM* play_audio_stream(int length, int bits, int stereo, int, int, int) {
    device = {};
    device.bufcount = device.active = 1;
    playing_half = 0;
    voice_runs = true;
    for (std::string& half : halves)
        half.assign(static_cast<std::size_t>(length * bits / 8 * (stereo != 0 ? 2 : 1)), '?');
    return &device;
}
void stop_audio_stream(AUDIOSTREAM*) {}
void* get_audio_stream_buffer(AUDIOSTREAM* stream) {
    if (stream->bufnum == stream->active) {
        if (playing_half == stream->active)
            return nullptr;
        stream->active = 1 - stream->active;
    }
    return halves[stream->bufnum].data();
}
void free_audio_stream_buffer(AUDIOSTREAM* stream) {
    stream->bufnum = 1 - stream->bufnum;
    voice_runs = true;
}
void voice_start(int) {
    voice_runs = true;
}
void voice_stop(int) {
    voice_runs = false;
}
void voice_set_position(int, int) {}
void voice_set_priority(int, int) {}
}

namespace vcc {
namespace {

bool loop_all = false;

/// Bytes without a short period, different for every theme.
std::string theme_data(int theme, std::size_t size) {
    std::string data(size, '\0');
    std::minstd_rand random(static_cast<unsigned>(theme + 1));
    std::ranges::generate(data, [&] { return static_cast<char>(random() >> 8); });
    return data;
}

/// What is heard of 8-bit data that a theme begins with: a fifth of a second rises from silence.
std::string risen(std::string heard_from_the_start, std::size_t frame_size = 1) {
    constexpr int rise = 22050 / 5;
    for (std::size_t at = 0; at < std::min(rise * frame_size, heard_from_the_start.size()); ++at) {
        const int sample = static_cast<unsigned char>(heard_from_the_start[at]) - 128;
        heard_from_the_start[at] = static_cast<char>(128 + sample * static_cast<int>(at / frame_size) / rise);
    }
    return heard_from_the_start;
}

class MusicTest : public test::FolderTest {
protected:
    MusicTest() {
        set_theme_order_source([] { return ThemeOrder{loop_all, loop_all ? (theme_shown + 1) % 3 : theme_shown}; });
        loop_all = false;
        sound_directory = "m";
        sound_on = music_on = music_playing = 1;
        current_theme = -1;
        theme_shown = 0;
        theme_fade_in = 200;
        for (int theme = 0; theme < 3; ++theme)
            add_theme(theme, theme_data(theme, 500));
    }
    ~MusicTest() override { stop_music(); }
    void add_theme(int theme, const std::string& data, int bits = 8, int channels = 1) const {
        const std::string name = "t" + std::to_string(theme) + ".wav";
        sound_entries[static_cast<std::size_t>(first_theme_entry + theme)].file = name;
        folder.write("m/" + name, test::WavFile().fmt(bits, channels).data(data));
    }
    static void play(int theme, std::size_t count) {
        stop_music();
        ASSERT_TRUE(start_theme(theme, 100));
        listen(count);
    }
    static void listen(std::size_t count) {
        heard.clear();
        for (std::size_t i = 0; i < count; ++i) {
            heard += halves[playing_half];
            playing_half = 1 - playing_half;
            feed_music();
            feed_music(); // polling more often than needed does no harm
        }
    }
};

const std::size_t theme_frames[] = {1, 1000, half_frames - 1, half_frames, half_frames + 1, 300000};

TEST_F(MusicTest, RepeatJoinsEndAndStartWithoutLosingASample) {
    for (const int channels : {1, 2})
        for (const std::size_t frames : theme_frames) {
            const auto frame_size = static_cast<std::size_t>(channels);
            const std::string data = theme_data(0, frames * frame_size);
            add_theme(0, data, 8, channels);
            theme_fade_in = channels == 1 ? 200 : 0;
            play(0, 6);
            std::string expected = data;
            while (expected.size() < 6 * half_frames * frame_size)
                expected += expected;
            expected.resize(6 * half_frames * frame_size);
            EXPECT_TRUE(heard == (theme_fade_in != 0 ? risen(expected, frame_size) : expected))
                << channels << " channels, " << frames << " frames";
        }
}

TEST_F(MusicTest, LoopAllPlaysEveryThemeWholeThenTheNext) {
    loop_all = true;
    for (const std::size_t frames : theme_frames) {
        const std::size_t theme_halves = (frames + half_frames - 1) / half_frames;
        std::string expected;
        for (const int theme : {0, 1, 2, 0}) {
            add_theme(theme, theme_data(theme, frames));
            expected += risen(theme_data(theme, frames));
            expected.append(theme_halves * half_frames - frames, '\x80');
        }
        play(0, 4 * theme_halves);
        EXPECT_TRUE(heard == expected) << frames;
        EXPECT_EQ(theme_shown, 1) << frames;
    }
}

TEST_F(MusicTest, WhatFollowsIsAskedForAtTheEndOfATheme) {
    loop_all = true;
    play(1, 0);
    loop_all = false;                 // repeating was chosen meanwhile
    ASSERT_TRUE(start_theme(1, 100)); // the theme is streaming: it goes on, not anew
    listen(2);
    EXPECT_EQ(heard.substr(0, 501), risen(theme_data(1, 500)) + '\x80');
    EXPECT_EQ(heard.substr(half_frames, 500), risen(theme_data(1, 500)));
}

TEST_F(MusicTest, SixteenBitsBecomeUnsignedAndAThemeWithoutAudioIsSilence) {
    add_theme(0, "", 16, 2);
    play(0, 1);
    EXPECT_EQ(heard.size(), 4 * half_frames);
    EXPECT_EQ(heard.substr(0, 4), std::string("\0\x80\0\x80", 4));
}

TEST_F(MusicTest, MusicThatThePlayerStoppedWaitsForHim) {
    ASSERT_TRUE(start_theme(0, 100));
    toggle_music();
    resume_music_voice(); // back from another window
    EXPECT_FALSE(music_voice_running());
    ASSERT_TRUE(start_theme(1, 100));
    EXPECT_FALSE(music_voice_running() || voice_runs);
    toggle_music();
    EXPECT_TRUE(music_voice_running() && voice_runs);
}

TEST_F(MusicTest, FailuresSwitchMusicOff) {
    std::filesystem::remove("m/t2.wav");
    for (const int theme : {2, 11, -100000}) {
        music_on = 3;
        EXPECT_FALSE(start_theme(theme, 100));
        EXPECT_EQ(music_on, 0);
        EXPECT_TRUE(logged("(theme:" + std::to_string(theme) + ")")) << theme;
        EXPECT_EQ(feed_music(), 0);
    }
}

} // namespace
} // namespace vcc
