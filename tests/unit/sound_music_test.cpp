#include "folder_test.h"
#include "sound/music.h"
#include "sound/refill.h"
#include "sound/sound.h"
#include "support/wav_file.h"

#include <vector>

namespace {

constexpr std::size_t half_frames = 131072;

/// The library's stream, played half by half by the tests: it hands out the half that is not playing, first both.
struct Device {
    AUDIOSTREAM stream{};
    int bits = 0, channels = 0, rate = 0, volume = 0, pan = 0;
    bool playing = false;
    bool dry = false; ///< a half was played twice
    std::string halves[2] = {};
    bool fresh[2] = {};
    int at = 0; ///< half that the voice is in
    std::string heard = {};

    void play_half() {
        if (!playing)
            return;
        heard += halves[at];
        dry = dry || !fresh[at];
        fresh[at] = false;
        at = 1 - at;
    }
};
Device device;
int opened = 0, closed = 0;
bool refuse = false;

} // namespace

extern "C" {
AUDIOSTREAM* play_audio_stream(int length, int bits, int stereo, int rate, int volume, int pan) {
    if (refuse)
        return nullptr;
    ++opened;
    device = Device{.bits = bits, .channels = stereo != 0 ? 2 : 1, .rate = rate, .volume = volume, .pan = pan};
    device.playing = true;
    device.stream.bufcount = device.stream.active = 1;
    for (std::string& half : device.halves)
        half.assign(static_cast<std::size_t>(length * bits / 8 * device.channels), '?');
    return &device.stream;
}
void stop_audio_stream(AUDIOSTREAM*) {
    ++closed;
}
void* get_audio_stream_buffer(AUDIOSTREAM* stream) {
    if (stream->bufnum == stream->active) {
        if (device.at == stream->active)
            return nullptr;
        stream->active = 1 - stream->active;
    }
    return device.halves[stream->bufnum].data();
}
void free_audio_stream_buffer(AUDIOSTREAM* stream) {
    device.fresh[stream->bufnum] = true;
    stream->bufnum = 1 - stream->bufnum;
}
void voice_start(int) {
    device.playing = true;
}
void voice_stop(int) {
    device.playing = false;
}
void voice_set_volume(int, int volume) {
    device.volume = volume;
}
void voice_set_position(int, int) {}
void voice_set_priority(int, int) {}
void voice_set_playmode(int, int) {}
}

namespace vcc {
namespace {

ThemeOrder order;

/// Bytes without a short period, different for every theme.
std::string theme_data(int theme, std::size_t size) {
    std::string data(size, '\0');
    unsigned state = 12345u + static_cast<unsigned>(theme);
    for (char& byte : data) {
        state = state * 1664525u + 1013904223u;
        byte = static_cast<char>(state >> 24);
    }
    return data;
}

/// What the device must receive for data of a file.
std::string as_played(std::string data, int bits) {
    for (std::size_t high = 1; bits == 16 && high < data.size(); high += 2)
        data[high] = static_cast<char>(data[high] ^ 0x80);
    return data;
}

class MusicTest : public test::FolderTest {
protected:
    MusicTest() {
        opened = closed = 0;
        order = {};
        set_theme_order_source([] { return order; });
        sound_directory = "m";
        sound_on = music_on = music_playing = sfx_allowed = 1;
        current_theme = -1;
        theme_shown = 0;
        for (int theme = 0; theme < 3; ++theme)
            add_theme(theme, theme_data(theme, 500));
    }
    ~MusicTest() override { stop_music(); }
    void add_theme(int theme, const std::string& data, int bits = 8, int channels = 1) const {
        const std::string name = "t" + std::to_string(theme) + ".wav";
        sound_entries[static_cast<std::size_t>(first_theme_entry + theme)].file = name;
        folder.write("m/" + name, test::WavFile().fmt(bits, channels).data(data));
    }
    static void play_halves(int count) {
        for (int i = 0; i < count; ++i) {
            device.play_half();
            feed_music();
            feed_music(); // polling more often than needed does no harm
        }
    }
};

const std::size_t theme_frames[] = {1, 7, 1000, half_frames - 1, half_frames, half_frames + 1, 262144, 262145, 300000};

TEST_F(MusicTest, RepeatJoinsEndAndStartWithoutLosingASample) {
    for (const int frame_bits : {8, 16, 32})
        for (const std::size_t frames : theme_frames) {
            SCOPED_TRACE(testing::Message() << frame_bits << " bits a frame, " << frames);
            const int bits = frame_bits == 8 ? 8 : 16;
            const std::string data = theme_data(0, frames * static_cast<std::size_t>(frame_bits / 8));
            add_theme(0, data, bits, frame_bits / bits);
            ASSERT_TRUE(start_theme(0, 100));
            play_halves(6);
            std::string expected = as_played(data, bits);
            while (expected.size() < device.heard.size())
                expected += expected;
            expected.resize(6 * half_frames * static_cast<std::size_t>(frame_bits / 8));
            EXPECT_TRUE(device.heard == expected) << device.heard.size();
            EXPECT_FALSE(device.dry);
        }
}

TEST_F(MusicTest, LoopAllPlaysEveryThemeWholeThenTheNext) {
    order = {true, 3};
    for (const int bits : {8, 16})
        for (const std::size_t frames : theme_frames) {
            SCOPED_TRACE(testing::Message() << bits << " bits, " << frames);
            const std::size_t size = frames * static_cast<std::size_t>(bits / 8);
            const std::size_t half = half_frames * static_cast<std::size_t>(bits / 8);
            for (int theme = 0; theme < 3; ++theme)
                add_theme(theme, theme_data(theme, size), bits);
            theme_shown = 0;
            ASSERT_TRUE(start_theme(0, 100));
            for (const int theme : {0, 1, 2, 0}) {
                std::string heard;
                for (const int before = opened; opened == before && heard.size() < 8 * half;) {
                    EXPECT_EQ(theme_shown, theme);
                    device.play_half();
                    heard = device.heard;
                    feed_music();
                }
                std::string expected = theme_data(theme, size);
                expected.resize((size + half - 1) / half * half, bits == 8 ? '\x80' : '\0');
                EXPECT_TRUE(heard == as_played(expected, bits)) << theme << ": " << heard.size();
            }
        }
    EXPECT_EQ(closed, opened - 1);
}

TEST_F(MusicTest, WhatFollowsIsAskedForAtTheEndOfATheme) {
    const struct {
        ThemeOrder order_at_end;
        int theme, next;
    } cases[] = {{{true, 1}, 0, 0}, {{false, 3}, 1, 1}, {{true, 2}, 2, 0}};
    for (const auto& each : cases) {
        order = {true, 3};
        ASSERT_TRUE(start_theme(each.theme, 100));
        current_theme = theme_shown = each.theme;
        order = each.order_at_end;
        const int before = opened;
        play_halves(1);
        device.play_half();
        EXPECT_EQ(opened, before + 1);
        EXPECT_EQ(device.heard.substr(0, 500), theme_data(each.next, 500));
    }
    for (const auto& [theme, next] : {std::pair{0, 1}, {2, 0}, {7, 0}, {-1, 0}})
        EXPECT_EQ(theme_after(theme, 3), next);
    EXPECT_EQ(theme_after(0, 0), 0);
}

TEST_F(MusicTest, AThemeWithoutAudioIsSilence) {
    add_theme(0, "", 16, 2);
    ASSERT_TRUE(start_theme(0, 100));
    play_halves(3);
    EXPECT_TRUE(device.heard == as_played(std::string(3 * 4 * half_frames, '\0'), 16));
}

TEST_F(MusicTest, TheCurrentThemeIsNotRestarted) {
    add_theme(0, theme_data(0, 500), 16, 2);
    ASSERT_TRUE(start_theme(0, 120));
    EXPECT_EQ(std::vector({device.bits, device.channels, device.rate, device.volume, device.pan}),
              (std::vector{16, 2, 22050, 120, 128}));
    current_theme = 0;
    for (const int theme : {0, 1}) {
        ASSERT_TRUE(start_theme(theme, 200));
        EXPECT_EQ(std::pair(opened, closed), std::pair(1 + theme, theme));
        EXPECT_EQ(device.volume, theme == 0 ? 120 : 200);
    }
    for (int* const flag : {&sound_on, &music_on, &sfx_allowed}) {
        *flag = 0;
        set_music_volume(90);
        EXPECT_EQ(device.volume, 200);
        *flag = 1;
    }
    set_music_volume(90);
    EXPECT_EQ(device.volume, 90);
}

TEST_F(MusicTest, PausedMusicKeepsItsPlace) {
    const std::string data = theme_data(0, 400000);
    add_theme(0, data);
    ASSERT_TRUE(start_theme(0, 100));
    play_halves(1);
    for (const bool by_key : {true, false}) {
        by_key ? toggle_music() : pause_music_voice();
        EXPECT_FALSE(music_voice_running());
        EXPECT_EQ(music_playing, by_key ? 0 : 1);
        if (by_key)
            resume_music_voice(); // back from another window: the player's choice stays
        play_halves(2);
        by_key ? toggle_music() : resume_music_voice();
        EXPECT_TRUE(music_voice_running());
        play_halves(1);
    }
    EXPECT_TRUE(device.heard == data.substr(0, 3 * half_frames));
    music_playing = 0; // stopped by the player: another theme waits for him
    ASSERT_TRUE(start_theme(0, 100));
    EXPECT_FALSE(device.playing);
}

TEST_F(MusicTest, FailuresSwitchMusicOff) {
    folder.write("m/t1.wav", test::WavFile().fmt(16, 2, 44100, 85).data("abcd"));
    std::filesystem::remove("m/t2.wav");
    const std::pair<int, const char*> cases[] = {{0, "Error init audiostream : "},
                                                 {1, "Error (1) detecting wav stream\n"},
                                                 {2, "Error (1) detecting wav"},
                                                 {11, "(theme:11)"},
                                                 {-1, "Error loading audio stream file: m/ (theme:-1)"}};
    for (const auto& [theme, reason] : cases) {
        empty_log();
        music_on = 3;
        refuse = theme == 0;
        EXPECT_FALSE(start_theme(theme, 100));
        EXPECT_EQ(music_on, 0);
        EXPECT_TRUE(logged(reason)) << theme;
        EXPECT_TRUE(logged("(theme:" + std::to_string(theme) + ")")) << theme;
        EXPECT_EQ(feed_music(), 0);
    }
}

} // namespace
} // namespace vcc
