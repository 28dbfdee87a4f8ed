#include "core/installation.h"
#include "folder_test.h"
#include "settings/config_file.h"
#include "settings/config_text.h"
#include "settings/settings.h"
#include "sound/sound.h"

#include <csignal>
#include <random>

#ifndef _WIN32
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace vcc {
namespace {

constexpr const char* config = "data/configs/vcc.cfg";

/// A fresh installation folder, its configuration file selected.
class Store : public test::FolderTest {
protected:
    Store() {
        folder.write(config, "");
        flush_settings(); // what an earlier test left unwritten
        sound_on = music_on = 1;
        for (const std::size_t theme : {0U, 1U, 3U})
            sound_entries[first_theme_entry + theme].file = "theme.wav";
        begin("");
    }
    void begin(std::string_view text) const {
        folder.write(config, text);
        select_config_file();
    }
    std::string file() const { return folder.read(config); }
};

TEST_F(Store, HostileValuesAreBroughtIntoRangeAndTheFileKeepsThem) {
    const std::string text = "[VELDOR_SOUND]\nhq_snd_volume = 11\nvcc_music_volume = -1\nhq_theme = 99\n"
                             "number_of_themes = 9\n\n[VELDOR_GRAPHICS]\nscreen_mode = 255\n"
                             "frame_rest = 99999999999\n\n[VELDOR_BATTLE]\nplayer_name = "
                             "0123456789abcdefXYZ\n\n[VELDOR_GENERAL]\nkeyboard = 9\n";
    begin(text);
    load_settings();
    EXPECT_EQ(settings.volumes[hq_module].effects, 10);
    EXPECT_EQ(settings.volumes[cc_module].music, 0);
    EXPECT_EQ(settings.theme[hq_module], 1) << "two themes, the fourth does not count";
    EXPECT_EQ(settings.screen_mode, -1);
    EXPECT_EQ(frame_rest, 100);
    EXPECT_EQ(settings.keyboard, 0) << "US";
    EXPECT_EQ(settings.message_detail, 2) << "the key is missing";
    EXPECT_EQ(settings.player_name, "0123456789abcde");
    EXPECT_EQ(file(), std::string(text).replace(text.find("themes = 9"), 10, "themes = 2"));
}

TEST_F(Store, ReadingTheFileLeavesItAlone) {
    const std::string text = "[a]\nx = 1\n[b]\ny = \n";
    begin(text);
    EXPECT_FALSE(config_flag("b", "y"));
    EXPECT_EQ(file(), text);
    set_config_value("b", "y", "3");
    flush_settings();
    EXPECT_EQ(file(), "[a]\nx = 1\n\n[b]\ny = 3\n");
}

TEST_F(Store, WithoutMusicNobodyLosesTheirTheme) {
    begin("[VELDOR_GENERAL]\nmusic_at_all = no\n[VELDOR_SOUND]\nhq_theme = 99\nnumber_of_themes = 11\n");
    load_settings();
    EXPECT_EQ(settings.theme[hq_module], 99);
    EXPECT_EQ(get_config_int("VELDOR_SOUND", "number_of_themes", -1), 0);
}

TEST_F(Store, AFlagIsTrueWhenItBeginsWithYesOrIsMissing) {
    begin("[s]\nplease = yes please\nno = no\nupper = Yes\nye = ye\nempty =\nbare\n");
    for (const char* const key : {"please", "missing"})
        EXPECT_TRUE(config_flag("s", key)) << key;
    for (const char* const key : {"no", "upper", "ye", "empty", "EMPTY", "bare"})
        EXPECT_FALSE(config_flag("s", key)) << key;
}

TEST_F(Store, WhatIsSavedIsLoadedAgain) {
    music_on = 0; // every theme is accepted
    load_settings();
    std::vector<std::tuple<std::string_view, int*, int>> saved;
    for (const SettingRow& row : rows::all)
        if (int* const* const place = std::get_if<int*>(&row.place);
            place && row.has(rows::loaded) && row.has(rows::saved) && row.outside != Outside::signed_byte) {
            **place = row.min + static_cast<int>(saved.size()) % (row.max - row.min + 1);
            saved.emplace_back(row.key, *place, **place);
        }
    settings.player_name = "J\xF6rg  X";
    settings.ip_address.clear();
    save_settings();
    settings = {};
    load_settings();
    for (const auto& [key, place, value] : saved)
        EXPECT_EQ(*place, value) << key;
    EXPECT_EQ(settings.player_name, "J\xF6rg  X");
    EXPECT_EQ(settings.ip_address, ".");
    EXPECT_EQ(get_config_string("system", "keyboard", ""),
              path::keyboards[static_cast<std::size_t>(settings.keyboard)]);
}

TEST_F(Store, KeysOfTheBattleModuleAreMadeButNeverChanged) {
    begin("[VELDOR_BATTLE]\nmessage_max = -1\nmaxmap_x = 0\n2D_style = old\n");
    save_settings();
    flush_settings();
    for (const char* const line :
         {"message_max = 1\n", "maxmap_x = 0\n", "maxmap_y = 34\n", "2D_style = old\n", "3D_map = yes\n"})
        EXPECT_NE(file().find(line), std::string::npos) << line;
}

TEST_F(Store, AResetReadsTheDefaultKeysAndWritesNothing) {
    begin("[VELDOR_SOUND]\nnumber_of_themes = 2\nhq_snd_volume_default = 2\nvcc_theme_default = 99\n");
    load_settings();
    const std::string before = file();
    reset_settings();
    EXPECT_EQ(settings.volumes[hq_module].effects, 2);
    EXPECT_EQ(settings.theme[cc_module], 1);
    EXPECT_EQ(file(), before);
}

TEST_F(Store, WhatOthersWroteSurvivesASaveAndTheFileIsReplacedInOneStep) {
    const std::string text = "# ours\r\n[Other Program]\r\nx=1 # note\r\nplain words\r\n\r\n[VELDOR_GENERAL]\r\n"
                             "  Keyboard=0\r\n\r\n[tail]\r\n; end\r\n";
    begin(text);
    std::ofstream(config, std::ios::app | std::ios::binary) << "added = while we run\r\n";
    std::filesystem::create_hard_link(config, "old file");
    set_config_value("VELDOR_GENERAL", "keyboard", "1");
    set_config_value("VELDOR_GENERAL", "more", "2");
    flush_settings();
    EXPECT_EQ(file(), "# ours\r\n[Other Program]\r\nx=1 # note\r\nplain words\r\n\r\n[VELDOR_GENERAL]\r\n"
                      "Keyboard = 1\r\nmore = 2\r\n\r\n[tail]\r\n; end\r\nadded = while we run\r\n");
    EXPECT_STREQ(get_config_string("tail", "added", ""), "while we run");
    EXPECT_EQ(folder.read("old file"), text + "added = while we run\r\n") << "a killed program would leave a part";
}

#ifndef _WIN32 // processes that can be killed at any moment
TEST_F(Store, AKilledProgramNeverLeavesPartOfAFile) {
    begin("# first line\n[VELDOR_SOUND]\nhq_theme = 0\nfiller = " + std::string(40000, 'x') +
          "\n\n[VELDOR_BATTLE]\nplayer_name = 0\n# last line\n");
    std::minstd_rand random(20);
    int last = 0;
    for (int kill_number = 0; kill_number < 50; ++kill_number) {
        int saved[2] = {-1, -1};
        ASSERT_EQ(::pipe(saved), 0);
        const pid_t writer = ::fork();
        ASSERT_GE(writer, 0);
        if (writer == 0)
            for (int value = last + 1;; ++value) { // until it is killed
                set_config_value("VELDOR_SOUND", "hq_theme", std::to_string(value));
                set_config_value("VELDOR_BATTLE", "player_name", std::to_string(value));
                flush_settings();
                if (::write(saved[1], "x", 1) != 1)
                    ::_exit(1);
            }
        char first = 0;
        ASSERT_EQ(::read(saved[0], &first, 1), 1);
        ::usleep(static_cast<useconds_t>(random() % 10000));
        ::kill(writer, SIGKILL);
        ::waitpid(writer, nullptr, 0);
        ::close(saved[0]);
        ::close(saved[1]);
        ASSERT_TRUE(file().starts_with("# first line\n") && file().ends_with("# last line\n")) << file();
        select_config_file();
        const int value = get_config_int("VELDOR_SOUND", "hq_theme", -1);
        ASSERT_EQ(value, get_config_int("VELDOR_BATTLE", "player_name", -1));
        ASSERT_GT(value, last) << "a save that was reported done is lost";
        last = value;
    }
}
#endif

TEST_F(Store, AnotherFileThatAModuleLeavesSelectedIsNotMixedIn) {
    begin("[VELDOR_SOUND]\nvcc_theme = 5\n");
    set_config_file("other.cfg");
    set_config_int("game", "score", 2);
    flush_settings();
    select_config_file();
    EXPECT_EQ(get_config_int("VELDOR_SOUND", "vcc_theme", 0), 5);
    EXPECT_EQ(file(), "[VELDOR_SOUND]\nvcc_theme = 5\n");
    EXPECT_NE(folder.read("other.cfg").find("score = 2"), std::string::npos);
}

TEST_F(Store, AFileThatCannotBeWrittenCostsOneLogLineAndNoValue) {
    begin("[VELDOR_BATTLE]\nplayer_name = Me\n");
    std::filesystem::create_directories("data/configs/vcc.cfg.new/x"); // not even root can write that file
    for (int volume = 1; volume <= 3; ++volume) {
        set_config_value("VELDOR_SOUND", "hq_snd_volume", std::to_string(volume));
        flush_settings();
    }
    flush_config_file(); // the library itself must have no file to spoil any more
    EXPECT_EQ(file(), "[VELDOR_BATTLE]\nplayer_name = Me\n");
    EXPECT_TRUE(logged("Cannot write data/configs/vcc.cfg"));
    EXPECT_EQ(folder.log().find("Cannot write"), folder.log().rfind("Cannot write"));

    std::filesystem::remove_all("data/configs/vcc.cfg.new");
    flush_settings();
    EXPECT_EQ(file(), "[VELDOR_BATTLE]\nplayer_name = Me\n\n[VELDOR_SOUND]\nhq_snd_volume = 3\n");
}

TEST_F(Store, AFileThatIsGoneOrCannotBeReadCostsNoValue) {
    const std::string text = "# mine\n[VELDOR_BATTLE]\nplayer_name = Anna\n";
    for (const bool folder_instead : {false, true}) {
        std::filesystem::remove_all(config);
        begin(text);
        std::filesystem::remove(config);
        if (folder_instead)
            std::filesystem::create_directory(config);
        load_settings();
        EXPECT_EQ(settings.player_name, "Anna") << folder_instead;
        EXPECT_EQ(std::filesystem::is_directory(config), folder_instead);
        EXPECT_TRUE(folder_instead || file().starts_with(text)) << file();
    }
    std::filesystem::remove(config);
}

TEST(ConfigText, ChangesTouchTheirLinesAlone) {
    const std::vector setting{ConfigChange{"s", "k", "1\n[evil]"}}, removal{ConfigChange{"s", "k", std::nullopt}};
    EXPECT_EQ(apply_changes("[S]\n# k=0\n#k=0\nK=0\nk=2\n", setting), "[S]\n# k=0\n#k=0\nk = 1\nk=2\n");
    EXPECT_EQ(apply_changes("[s]\nk#j=0\n", setting), "[s]\nk = 1\n") << "a comment, as the library reads it";
    EXPECT_EQ(apply_changes("k=0\n[a]\nk=0\n[s]\n", setting), "k=0\n[a]\nk=0\n[s]\nk = 1\n");
    EXPECT_EQ(apply_changes("[s]\nkk=0\n\n\n[a]\n", setting), "[s]\nkk=0\nk = 1\n\n\n[a]\n");
    EXPECT_EQ(apply_changes("[s]\nk=0\nj=1\n", removal), "[s]\nj=1\n");
}

} // namespace
} // namespace vcc
