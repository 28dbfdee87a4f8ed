#include "folder_test.h"
#include "sound/setup.h"
#include "sound/sound.h"
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

} // namespace
} // namespace vcc
