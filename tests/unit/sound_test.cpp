#include "folder_test.h"
#include "sound/sound.h"
#include "support/wav_file.h"

#include <array>
#include <vector>

namespace {

// The sound device of these tests.
bool card_present = true;
std::string installed; // drivers asked for: a is any, n is none
std::vector<std::array<int, 5>> played;

} // namespace

extern "C" {
int install_sound(int digi, int, const char*) {
    installed += digi == DIGI_AUTODETECT ? 'a' : digi == DIGI_NONE ? 'n' : '?';
    ustrzcpy(allegro_error, ALLEGRO_ERROR_SIZE, "No voices");
    return card_present || digi == DIGI_NONE ? 0 : -1;
}
int play_sample(const SAMPLE* sample, int volume, int pan, int pitch, int loop) {
    played.push_back({sample == vcc::sound_entries[5].sample.get(), volume, pan, pitch, loop});
    return 0;
}
}

namespace vcc {
namespace {

const std::string click = test::WavFile().fmt(8, 1).data("abcd");

class SoundTest : public test::FolderTest {
protected:
    SoundTest() {
        start_anew();
        for (const char* name : {"sfx/click.wav", "sfx/a.wav", "sfx/b.wav"})
            folder.write(name, click);
        folder.write("sfx/bad.wav", click.substr(0, 30));
    }
    static void start_anew() {
        for (SoundEntry& entry : sound_entries)
            entry = {};
        enable_sound();
        card_present = true;
        installed.clear();
        played.clear();
    }
    int read(const std::string& text) const {
        folder.write("vcc.snd", text);
        return read_sound_setup("vcc.snd");
    }
    /// Number and name of every entry that is in use, with a "+" when its sample is loaded.
    static std::string entries() {
        std::string text;
        for (std::size_t number = 0; number < sound_entries.size(); ++number)
            if (const SoundEntry& entry = sound_entries[number]; !entry.name.empty() || !entry.file.empty())
                text +=
                    (text.empty() ? "" : ", ") + std::to_string(number) + " " + entry.name + (entry.sample ? "+" : "");
        return text;
    }
};

TEST_F(SoundTest, TheSetUpFileNamesAndLoads) {
    const struct {
        const char* what;
        std::string text;
        int handled, music, on;
        const char *drivers, *entries, *log;
    } cases[] = {
        {"effects", "# sounds\n*\n$sfx\n+12\n&Click\r\n-click.wav\n?\n\n+200\n&Last\n", 1, 0, 1, "a",
         "12 Click+, 200 Last", ""},
        {"comments only", "# one\n# two\n", 0, 0, 1, "", "", ""},
        {"no card: the rest is not read", "$sfx\n+1\n-a.wav\n*\n+2\n-b.wav\n", 1, 0, 0, "an", "1 +",
         "Error initialising sound: No voices\n"},
        {"a broken effect", "$sfx\n+1\n-a.wav\n+7\n-bad.wav\n+2\n-b.wav\n", 0, 0, 0, "n", "1 +, 7 ",
         "Error loading sound nr:7\n"},
        {"past the last entry", "$sfx\n+201\n&No\n-a.wav\n", 0, 0, 1, "", "", ""},
        {"far past it", "$sfx\n+99999999999999\n-a.wav\n", 0, 0, 1, "", "", ""},
        {"not a number: entry 0", "$sfx\n+-3\n&Zero\n-a.wav\n", 1, 0, 1, "", "0 Zero+", ""},
        {"a long name", "$sfx\n+3\n&123456789012345678901234\n-a.wav\n", 1, 0, 1, "", "3 12345678901234567890+", ""},
        {"themes", "$sfx\n+190\n\xA7One\n-a.wav\n+191\n\xA7Two\n-b.wav\n", 2, 2, 1, "", "190 One, 191 Two", ""},
        {"a hole", "$sfx\n+190\n\xA7One\n-a.wav\n+192\n\xA7Two\n-b.wav\n+1\n&E\n-a.wav\n", 3, 0, 1, "",
         "1 E+, 190 One, 192 THEME_ERROR 1", "Error loading music -> music_nr:192 count:191\n"},
        {"a theme is missing", "$sfx\n+190\n\xA7One\n-no.wav\n+191\n\xA7Two\n-b.wav\n+1\n&E\n-a.wav\n", 2, 0, 1, "",
         "1 E+, 190 THEME_ERROR 2", "Error loading music theme nr:190 (One)\n"},
        {"not announced as a theme", "$sfx\n+190\n&One\n-no.wav\n", 1, 0, 1, "", "190 One", ""},
    };
    for (const auto& each : cases) {
        start_anew();
        card_present = std::string_view(each.drivers) != "an";
        EXPECT_EQ(read(each.text), each.handled) << each.what;
        EXPECT_EQ(music_on, each.music) << each.what;
        EXPECT_EQ(std::pair(sound_on, sfx_allowed), std::pair(each.on, each.on)) << each.what;
        EXPECT_EQ(installed, each.drivers) << each.what;
        EXPECT_EQ(entries(), each.entries) << each.what;
        EXPECT_TRUE(logged(each.log)) << each.what;
    }
    EXPECT_EQ(read_sound_setup("none.snd"), 0);
    EXPECT_TRUE(logged("Error opening Sound-Init-File => none.snd\n"));
    EXPECT_EQ(sound_on, 1);
}

TEST_F(SoundTest, ThemesAreCountedUpToTheFirstHole) {
    for (std::size_t theme = 0; theme < theme_limit; ++theme)
        sound_entries[first_theme_entry + theme].file = "t.wav";
    EXPECT_EQ(count_themes(), 11);
    sound_entries[first_theme_entry + 2].file.clear();
    EXPECT_EQ(count_themes(), 2);
}

TEST_F(SoundTest, EffectsPlayOnlyWhenAllowedAndLoaded) {
    read("$sfx\n-click.wav\n+5\n-click.wav\n"); // entry 0 as well: number 0 is silence
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

TEST_F(SoundTest, ReleaseEmptiesTheTableOnlyWhileSoundIsOn) {
    read("$sfx\n+5\n-click.wav\n");
    for (const int on : {0, 1}) {
        sound_on = on;
        release_sound();
        EXPECT_EQ(sound_entries[5].sample == nullptr, on == 1);
    }
    EXPECT_EQ(sound_entries[5].file, "click.wav");
}

} // namespace
} // namespace vcc
