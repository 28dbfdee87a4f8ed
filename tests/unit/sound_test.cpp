#include "sound/sound.h"
#include "support/allegro_none.h"
#include "support/wav_file.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// The sound device of these tests.
bool card_present = true;
std::vector<int> installed; // drivers asked for
struct Played {
    const SAMPLE* sample;
    int volume, pan, pitch, loop;
};
std::vector<Played> played;

} // namespace

extern "C" {
int install_sound(int digi, int, const char*) {
    installed.push_back(digi);
    ustrzcpy(allegro_error, ALLEGRO_ERROR_SIZE, "No voices");
    return card_present || digi == DIGI_NONE ? 0 : -1;
}
int play_sample(const SAMPLE* sample, int volume, int pan, int pitch, int loop) {
    played.push_back({sample, volume, pan, pitch, loop});
    return 0;
}
}

namespace vcc {
namespace {

const std::string click = test::WavFile().fmt(8, 1).data("abcd");

class SoundTest : public testing::Test {
protected:
    SoundTest() {
        test::start_library();
        for (SoundEntry& entry : sound_entries)
            entry = {};
        sound_directory.clear();
        enable_sound();
        card_present = true;
        installed.clear();
        played.clear();
        folder.write("data/logfiles/veldor_log.txt", "");
        for (const char* name : {"sfx/click.wav", "sfx/a.wav", "sfx/b.wav"})
            folder.write(name, click);
    }
    int read(const std::string& text) {
        folder.write("vcc.snd", text);
        return read_sound_setup("vcc.snd");
    }
    bool logged(const std::string& text) { return folder.log().find(text) != std::string::npos; }

    test::ScratchFolder folder;
};

TEST_F(SoundTest, LinesNameAndLoadAnEffect) {
    EXPECT_EQ(read("# sounds\n*\n$sfx\n+12\n&Click\r\n-click.wav\n?\n\n+200\n&Last\n"), 1);
    EXPECT_EQ(sound_entries[12].name, "Click");
    EXPECT_TRUE(sound_entries[12].sample);
    EXPECT_EQ(sound_entries[200].name, "Last");
    EXPECT_EQ(installed, std::vector{DIGI_AUTODETECT});
    EXPECT_EQ(sound_on, 1);
}

TEST_F(SoundTest, OnlyCommentsInstallNothing) {
    EXPECT_EQ(read("# one\n# two\n"), 0);
    EXPECT_EQ(music_on, 0);
    EXPECT_TRUE(installed.empty());
}

TEST_F(SoundTest, MissingSetupKeepsSoundOn) {
    EXPECT_EQ(read_sound_setup("none.snd"), 0);
    EXPECT_TRUE(logged("Error opening Sound-Init-File => none.snd\n"));
    EXPECT_EQ(sound_on, 1);
}

TEST_F(SoundTest, NoCardSwitchesSoundOffAndStopsReading) {
    card_present = false;
    EXPECT_EQ(read("$sfx\n+1\n-a.wav\n*\n+2\n-b.wav\n"), 1);
    EXPECT_TRUE(logged("Error initialising sound: No voices\n"));
    EXPECT_EQ(sound_on, 0);
    EXPECT_EQ(sfx_allowed, 0);
    EXPECT_EQ(installed, (std::vector{DIGI_AUTODETECT, DIGI_NONE}));
    EXPECT_TRUE(sound_entries[1].sample);
    EXPECT_FALSE(sound_entries[2].sample);
}

TEST_F(SoundTest, BrokenEffectSwitchesSoundOff) {
    folder.write("sfx/bad.wav", click.substr(0, 30));
    EXPECT_EQ(read("$sfx\n+1\n-a.wav\n+7\n-bad.wav\n+2\n-b.wav\n"), 0);
    EXPECT_TRUE(logged("Error loading sound nr:7\n"));
    EXPECT_EQ(sound_on, 0);
    EXPECT_FALSE(sound_entries[2].sample);
}

TEST_F(SoundTest, EntryNumbersEndAt200) {
    EXPECT_EQ(read("$sfx\n+201\n&No\n-a.wav\n"), 0);
    EXPECT_EQ(read("$sfx\n+99999999999999\n-a.wav\n"), 0);
    EXPECT_EQ(read("$sfx\n+-3\n&Zero\n-a.wav\n"), 1); // not a number: entry 0
    EXPECT_EQ(sound_entries[0].name, "Zero");
    EXPECT_EQ(read("$sfx\n+3\n&123456789012345678901234\n-click.wav\n"), 1);
    EXPECT_EQ(sound_entries[3].name, "12345678901234567890");
}

struct ThemeCase {
    const char* what;
    std::string lines;
    int handled, music;
    int entry;
    std::string name, log;
};

TEST_F(SoundTest, ThemesMustComeInOrderAndExist) {
    const std::vector<ThemeCase> table = {
        {"in order", "+190\n\xA7One\n-a.wav\n+191\n\xA7Two\n-b.wav\n", 2, 2, 191, "Two", ""},
        {"a hole", "+190\n\xA7One\n-a.wav\n+192\n\xA7Two\n-b.wav\n+1\n&E\n-click.wav\n", 3, 0, 192, "THEME_ERROR 1",
         "Error loading music -> music_nr:192 count:191\n"},
        {"missing", "+190\n\xA7One\n-no.wav\n+191\n\xA7Two\n-b.wav\n+1\n&E\n-click.wav\n", 2, 0, 190, "THEME_ERROR 2",
         "Error loading music theme nr:190 (One)\n"},
        {"not announced", "+190\n&One\n-no.wav\n", 1, 0, 190, "One", ""},
    };
    for (const ThemeCase& row : table) {
        for (SoundEntry& entry : sound_entries)
            entry = {};
        EXPECT_EQ(read("$sfx\n" + row.lines), row.handled) << row.what;
        EXPECT_EQ(music_on, row.music) << row.what;
        EXPECT_EQ(sound_entries[static_cast<std::size_t>(row.entry)].name, row.name) << row.what;
        EXPECT_TRUE(logged(row.log)) << row.what;
        EXPECT_EQ(sound_entries[1].sample != nullptr, row.lines.find("+1\n") != std::string::npos) << row.what;
        EXPECT_EQ(sound_on, 1) << row.what;
    }
}

TEST_F(SoundTest, ThemesAreCountedUpToTheFirstHole) {
    for (const std::size_t theme : {0, 1, 3})
        sound_entries[first_theme_entry + theme].file = "t.wav";
    EXPECT_EQ(count_themes(), 2);
    for (std::size_t theme = 0; theme < theme_limit; ++theme)
        sound_entries[first_theme_entry + theme].file = "t.wav";
    EXPECT_EQ(count_themes(), 11);
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
    ASSERT_EQ(played.size(), 1u);
    EXPECT_EQ(played[0].sample, sound_entries[5].sample.get());
    EXPECT_EQ(played[0].volume, 175);
    EXPECT_EQ(played[0].pan, 128);
    EXPECT_EQ(played[0].pitch, 1000);
    EXPECT_EQ(played[0].loop, 0);

    drop_effect(5);
    play_effect(5);
    EXPECT_EQ(played.size(), 1u);
}

TEST_F(SoundTest, ReleaseEmptiesTheTableOnlyWhileSoundIsOn) {
    read("$sfx\n+5\n-click.wav\n");
    sound_on = 0;
    release_sound();
    EXPECT_TRUE(sound_entries[5].sample);
    sound_on = 1;
    release_sound();
    EXPECT_FALSE(sound_entries[5].sample);
    EXPECT_EQ(sound_entries[5].file, "click.wav");
}

} // namespace
} // namespace vcc
