#include "folder_test.h"
#include "sound/setup.h"
#include "sound/sound.h"
#include "sound/wav_file.h"
#include "support/wav_file.h"

#include <array>
#include <vector>

namespace {

std::vector<std::array<int, 5>> played;

} // namespace

extern "C" int play_sample(const SAMPLE* sample, int volume, int pan, int pitch, int loop) {
    played.push_back({sample == vcc::sound_entries[5].sample.get(), volume, pan, pitch, loop});
    return 0;
}

namespace vcc {
namespace {

class SoundTest : public test::FolderTest {
protected:
    SoundTest() {
        for (const char* const name : {"sfx/a.wav", "bare.wav"})
            folder.write(name, test::WavFile().fmt(8, 1).data("abcd"));
    }
    int read(const std::string& text) const {
        sound_entries = {};
        sound_on = 1;
        folder.write("vcc.snd", text);
        return read_sound_setup("vcc.snd");
    }
    /// Number and name of every entry that is in use, with a "+" when its sample is loaded.
    static std::string entries() {
        std::string text;
        for (std::size_t number = 0; number < sound_entries.size(); ++number)
            if (const SoundEntry& entry = sound_entries[number]; !entry.name.empty() || !entry.file.empty())
                text += std::to_string(number) + " " + entry.name + (entry.sample ? "+ " : " ");
        return text;
    }
};

TEST_F(SoundTest, TheSetUpFileNamesAndLoads) {
    const struct {
        const char *what, *text;
        int handled, music, on;
        const char* entries;
    } cases[] = {
        {"effects", "# sounds\n$sfx\n+12\n&Click\r\n-a.wav\n?\n\n+200\n&Last\n", 1, 0, 1, "12 Click+ 200 Last "},
        {"a broken effect", "$sfx\n+1\n-a.wav\n+7\n-no.wav\n+2\n-a.wav\n", 0, 0, 0, "1 + 7  "},
        {"no directory, whatever the last reading named", "+1\n&E\n-bare.wav\n", 1, 0, 1, "1 E+ "},
        {"past the last entry", "$sfx\n+201\n&No\n-a.wav\n", 0, 0, 1, ""},
        {"a long name", "$sfx\n+3\n&123456789012345678901234\n-a.wav\n", 1, 0, 1, "3 12345678901234567890+ "},
        {"themes", "$sfx\n+190\n\xA7One\n-a.wav\n+191\n\xA7Two\n-a.wav\n", 2, 2, 1, "190 One 191 Two "},
        {"a theme is missing", "$sfx\n+190\n\xA7One\n-no.wav\n+191\n\xA7Two\n-a.wav\n+1\n&E\n-a.wav\n", 2, 0, 1,
         "1 E+ 190 THEME_ERROR 2 "},
        {"a hole", "$sfx\n+190\n\xA7One\n-a.wav\n+192\n\xA7Two\n-a.wav\n+1\n&E\n-a.wav\n", 3, 0, 1,
         "1 E+ 190 One 192 THEME_ERROR 1 "},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(read(each.text), each.handled) << each.what;
        EXPECT_EQ(music_on, each.music) << each.what;
        EXPECT_EQ(sound_on, each.on) << each.what;
        EXPECT_EQ(entries(), each.entries) << each.what;
    }
    EXPECT_TRUE(logged("Error loading music -> music_nr:192 count:191\n"));
    EXPECT_EQ(count_themes(), 1) << "up to the hole";
}

TEST_F(SoundTest, EffectsPlayOnlyWhenAllowedAndLoaded) {
    read("$sfx\n-a.wav\n+5\n-a.wav\n"); // entry 0 as well: number 0 is silence
    sfx_volume = 175;
    for (const int silent : {0, 6, -1, 201})
        play_effect(silent);
    sound_on = 0;
    play_effect(5);
    sound_on = 1;
    {
        const EffectsHeld held;
        play_effect(5);
    }
    EXPECT_TRUE(played.empty());
    play_effect(5);
    drop_effect(5);
    play_effect(5);
    EXPECT_EQ(played, (std::vector{std::array{1, 175, 128, 1000, 0}}));
}

using test::WavFile;
using WavTest = test::FolderTest;

TEST_F(WavTest, HeadersTellWhereTheAudioIsOrAreRefused) {
    const std::string audio = "abcdefgh";
    using Told = std::vector<long>; // place and length of the audio, rate, bits, channels
    const Told refused{0, 0, 22050, 8, 1};
    const std::tuple<const char*, std::string, Told> cases[] = {
        {"18-byte format", WavFile().fmt(16, 1, 11025, 1, "\xFF\xFF").data(audio), {46, 8, 11025, 16, 1}},
        {"odd chunk", WavFile().chunk("LIST", {"abc\0", 4}, 3).fmt(8, 2).data(audio), {56, 8, 22050, 8, 2}},
        {"data beyond the end", WavFile().fmt(16, 2).chunk("data", audio, 0xFFFFFFFF).bytes(), {44, 8, 22050, 16, 2}},
        {"a broken last frame", WavFile().fmt(16, 2).data("abcdefg"), {44, 4, 22050, 16, 2}},
        {"compressed", WavFile().fmt(16, 2, 44100, 85).data(audio), refused},
        {"no channel", WavFile().fmt(16, 0).data(audio), refused},
        {"24 bits", WavFile().fmt(24, 1).data(audio), refused},
        {"no rate", WavFile().fmt(16, 1, 0).data(audio), refused},
        {"absurd rate", WavFile().fmt(16, 1, 2000000000).data(audio), refused},
        {"chunk longer than the file", WavFile().chunk("LIST", "abc", 0xFFFFFFFF).data(audio), refused},
        {"no data", WavFile().fmt(8, 1).bytes(), refused},
    };
    for (const auto& [what, bytes, told] : cases) {
        folder.write("a.wav", bytes);
        const WavHeader read = parse_wav_header("a.wav");
        EXPECT_EQ((Told{read.data_offset, read.data_length, read.rate, read.bits, read.channels}), told) << what;
    }
}

TEST_F(WavTest, EffectsBecomeUnsignedSamples) {
    folder.write("a.wav", WavFile().fmt(16, 2, 8000).data({"\x01\x80\x02\x00\x03\x7F\x04\xFF", 8}));
    const SamplePtr wide = load_effect_file("a.wav").value_or(nullptr);
    ASSERT_TRUE(wide);
    EXPECT_EQ(std::pair(wide->len, wide->freq), std::pair(2UL, 8000));
    const auto* const words = static_cast<const unsigned short*>(wide->data);
    EXPECT_EQ(std::vector(words, words + 4), (std::vector<unsigned short>{0x0001, 0x8002, 0xFF03, 0x7F04}));
    folder.write("two_minutes.wav", WavFile().fmt(16, 2, 44100).data(std::string(120u * 4 * 44100, 'x')));
    const SamplePtr large = load_effect_file("two_minutes.wav").value_or(nullptr);
    EXPECT_TRUE(large && large->len == 120u * 44100);
}

TEST(FadeIn, RaisesEverySampleOfTheFirstFrames) {
    std::vector<std::int16_t> words{1000, -1000, 1000, -1000, 1000, -1000, 1000};
    fade_in({reinterpret_cast<unsigned char*>(words.data()), 2 * words.size()}, 16, 4, 2);
    EXPECT_EQ(words, (std::vector<std::int16_t>{0, 0, 500, -500, 1000, -1000, 1000}));
}

} // namespace
} // namespace vcc
