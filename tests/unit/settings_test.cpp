#include "core/text.h"
#include "settings/config_text.h"
#include "settings/keyboard_layout.h"
#include "settings/rows.h"
#include "settings/settings.h"
#include "sound/sound.h"
#include "support/allegro_none.h"

#include <csignal>
#include <gtest/gtest.h>
#include <random>
#include <sys/wait.h>

namespace vcc {
namespace {

constexpr const char* config = "data/configs/vcc.cfg";

/// A fresh installation folder, its configuration file selected.
class Store : public ::testing::Test {
protected:
    void SetUp() override {
        test::start_library();
        flush_settings(); // what an earlier test left unwritten
        std::filesystem::current_path(folder.path());
        std::filesystem::create_directories("data/logfiles");
        sound_on = 1;
        music_on = 0;
        number_of_themes = 0;
        settings = {};
        begin("");
    }
    void TearDown() override {
        for (SoundEntry& entry : sound_entries)
            entry.file.clear();
    }
    void begin(std::string_view text) {
        folder.write(config, text);
        select_config_file();
    }
    void register_themes(std::initializer_list<int> themes) {
        for (const int theme : themes)
            sound_entries[static_cast<std::size_t>(first_theme_entry + theme)].file = "theme.wav";
        music_on = 1;
    }
    std::string file() const { return folder.read(config); }
    static int on_disk(const char* section, const char* key) {
        select_config_file();
        return get_config_int(section, key, -99);
    }
    const test::ScratchFolder folder;
};

TEST_F(Store, AnEmptyFileGivesTheHardDefaults) {
    load_settings();
    for (std::size_t module = 0; module < module_count; ++module) {
        EXPECT_EQ(settings.volumes[module].effects, 8);
        EXPECT_EQ(settings.volumes[module].music, 3);
        EXPECT_EQ(theme_loop[module], 1);
    }
    EXPECT_EQ(settings.theme, (std::array{4, 3, 1, 2}));
    EXPECT_EQ(settings.screen_mode, 0);
    EXPECT_EQ(settings.resolution, 3);
    EXPECT_EQ(settings.bitmap_depth, 0);
    EXPECT_EQ(settings.anti_aliased, 1);
    EXPECT_EQ((std::array{settings.brontar_anim, settings.sprite_speed, settings.message_delay, settings.message_detail,
                          settings.keyboard, frame_rest}),
              (std::array{1, 1, 1, 2, 0, 0}));
    EXPECT_STREQ(settings.player_name, "Player1");
    EXPECT_STREQ(settings.ip_address, ".");
}

TEST_F(Store, HostileValuesAreBroughtIntoRangeAndTheFileKeepsThem) {
    const std::string text = "[VELDOR_SOUND]\nhq_snd_volume = 11\nvcc_music_volume = -1\nhq_theme = 99\n"
                             "battle_theme_loop = 7\n\n[VELDOR_GRAPHICS]\nscreen_mode = 255\nbitmap_depth = 4\n"
                             "resolution = -2147483648\nframe_rest = 99999999999\n\n[VELDOR_GENERAL]\nkeyboard = 6\n\n"
                             "[VELDOR_BATTLE]\nplayer_name = 0123456789abcdefXYZ\nsprite_speed = abc\n";
    register_themes({0, 1, 3});
    begin(text);
    load_settings();
    EXPECT_EQ(settings.volumes[hq_module].effects, 10);
    EXPECT_EQ(settings.volumes[cc_module].music, 0);
    EXPECT_EQ(settings.theme, (std::array{1, 1, 1, 1})) << "two themes, the fourth does not count";
    EXPECT_EQ(theme_loop[battle_module], 1);
    EXPECT_EQ(settings.screen_mode, -1);
    EXPECT_EQ(settings.bitmap_depth, 3);
    EXPECT_EQ(settings.resolution, 0);
    EXPECT_EQ(frame_rest, 20);
    EXPECT_EQ(settings.keyboard, 5);
    EXPECT_STREQ(settings.player_name, "0123456789abcde");
    EXPECT_EQ(settings.sprite_speed, 0);
    EXPECT_EQ(file(), std::string(text).insert(text.find("\n[VELDOR_GRAPHICS]"), "number_of_themes = 2\n"));
}

TEST_F(Store, WithoutMusicThemesAreCountedAsNoneAndNobodyLosesTheirs) {
    register_themes({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
    load_settings();
    EXPECT_EQ(std::pair(number_of_themes, music_on), std::pair(11, 11));
    begin("[VELDOR_GENERAL]\nmusic_at_all = no\n[VELDOR_SOUND]\nhq_theme = 9\nnumber_of_themes = 11\n");
    load_settings();
    EXPECT_EQ(std::pair(number_of_themes, music_on), std::pair(0, 0));
    EXPECT_EQ(settings.theme[hq_module], 9);
    EXPECT_EQ(on_disk("VELDOR_SOUND", "number_of_themes"), 0);
}

TEST_F(Store, AFlagIsTrueWhenItBeginsWithYesOrIsMissing) {
    begin("[s]\nyes = yes\nplease = yes please\nno = no\nupper = Yes\none = 1\nye = ye\nempty =\nbare\n");
    const std::pair<const char*, bool> cases[] = {
        {"yes", true},  {"please", true}, {"missing", true}, {"no", false},    {"upper", false},
        {"one", false}, {"ye", false},    {"empty", false},  {"EMPTY", false}, {"bare", false}};
    for (const auto& [key, answer] : cases)
        EXPECT_EQ(config_flag("s", key), answer) << key;
    EXPECT_TRUE(config_flag("no such section", "yes"));
}

TEST_F(Store, WhatIsSavedIsLoadedAgain) {
    load_settings();
    int value = 0;
    for (const SettingRow& row : setting_rows()) // a value of its own for every number
        if (int* const* const place = std::get_if<int*>(&row.place); place != nullptr && row.has(KeyUse::save))
            **place = row.min + value++ % (row.max - row.min + 1);
    settings.screen_mode = -1;
    store_text(settings.player_name, "J\xF6rg  X");
    settings.ip_address[0] = '\0';
    const Settings saved = settings;
    const auto loops = theme_loop;
    save_settings();
    settings = {};
    theme_loop = {};
    load_settings();
    for (std::size_t module = 0; module < module_count; ++module) {
        EXPECT_EQ(settings.volumes[module].effects, saved.volumes[module].effects);
        EXPECT_EQ(settings.volumes[module].music, saved.volumes[module].music);
    }
    EXPECT_EQ(settings.theme, saved.theme);
    EXPECT_EQ(theme_loop, loops);
    EXPECT_EQ((std::array{settings.resolution, settings.bitmap_depth, settings.brontar_anim, settings.sprite_speed,
                          settings.message_delay, settings.message_detail, settings.keyboard}),
              (std::array{saved.resolution, saved.bitmap_depth, saved.brontar_anim, saved.sprite_speed,
                          saved.message_delay, saved.message_detail, saved.keyboard}));
    EXPECT_EQ(on_disk("VELDOR_GRAPHICS", "screen_mode"), -1);
    EXPECT_STREQ(settings.player_name, "J\xF6rg  X");
    EXPECT_STREQ(settings.ip_address, ".");
    EXPECT_EQ(get_config_string("system", "keyboard", ""), keyboard_mapping_file(saved.keyboard));
}

TEST_F(Store, KeysOfTheBattleModuleAreMadeButNeverChanged) {
    begin("[VELDOR_BATTLE]\nmessage_max = -1\nmaxmap_x = 0\n2D_style = old\n");
    save_settings();
    EXPECT_EQ(file().find("maxmap_y"), std::string::npos) << "with the next flush, not before";
    load_settings();
    EXPECT_EQ(on_disk("VELDOR_BATTLE", "message_max"), 1);
    EXPECT_EQ(on_disk("VELDOR_BATTLE", "maxmap_x"), 0);
    EXPECT_EQ(on_disk("VELDOR_BATTLE", "maxmap_y"), 34);
    EXPECT_STREQ(get_config_string("VELDOR_BATTLE", "2D_style", ""), "old");
    EXPECT_STREQ(get_config_string("VELDOR_BATTLE", "3D_map", ""), "yes");
    EXPECT_STREQ(get_config_string("VELDOR_BATTLE", "ambient_at_all", ""), "yes");
}

TEST_F(Store, AResetReadsTheDefaultKeysAndWritesNothing) {
    const std::string text = "[VELDOR_SOUND]\nhq_snd_volume_default = 2\nvcc_theme_default = 99\n[VELDOR_GRAPHICS]\n"
                             "screen_mode_default = 1\nresolution = 1\nresolution_default = 4\n[VELDOR_BATTLE]\n"
                             "player_name = Me\nplayer_name_default = You\n[VELDOR_GENERAL]\nkeyboard_default = 1\n";
    begin(text);
    load_settings();
    number_of_themes = 4;
    settings.volumes.fill({0, 0});
    settings.anti_aliased = 0;
    const std::string before = file();
    reset_settings();
    EXPECT_EQ(settings.volumes[hq_module].effects, 2);
    EXPECT_EQ(settings.volumes[factory_module].effects, 8);
    EXPECT_EQ(settings.theme[cc_module], 3);
    EXPECT_EQ(number_of_themes, 4) << "kept while music is off";
    EXPECT_EQ(settings.screen_mode, 1);
    EXPECT_EQ(settings.keyboard, 1);
    EXPECT_EQ(std::pair(settings.resolution, settings.anti_aliased), std::pair(1, 0));
    EXPECT_STREQ(settings.player_name, "Me");
    EXPECT_EQ(file(), before);
}

TEST_F(Store, TheKeyboardSettingNamesItsMappingFile) {
    EXPECT_EQ(keyboard_mapping_file(3), "data/configs/fr.cfg");
    for (const int other : {0, 6, 9, -1})
        EXPECT_EQ(keyboard_mapping_file(other), "data/configs/us.cfg");
    settings.keyboard = 1;
    write_keyboard_layout();
    EXPECT_NE(file().find("[system]\nkeyboard = data/configs/de.cfg\n"), std::string::npos) << file();
}

TEST_F(Store, WhatOthersWroteSurvivesASave) {
    begin(
        "# ours\r\n; theirs\r\n[Other Program]\r\nx=1 # note\r\nplain words\r\n\r\n[VELDOR_GENERAL]\r\n  Keyboard=0\r\n"
        "\r\n[tail]\r\n# end");
    std::ofstream(config, std::ios::app) << "\r\nadded = while we run\r\n";
    settings.keyboard = 1;
    set_config_int("VELDOR_GENERAL", "keyboard", 1);
    set_config_int("VELDOR_GENERAL", "more", 2);
    flush_settings();
    EXPECT_EQ(file(), "# ours\r\n; theirs\r\n[Other Program]\r\nx=1 # note\r\nplain words\r\n\r\n[VELDOR_GENERAL]\r\n"
                      "Keyboard = 1\r\nmore = 2\r\n\r\n[tail]\r\n# end\r\nadded = while we run\r\n");
    EXPECT_STREQ(get_config_string("tail", "added", ""), "while we run");
}

TEST_F(Store, AModulesOwnWritesAreSeenAndItsOtherFileIsNotMixedIn) {
    begin("[VELDOR_SOUND]\nvcc_theme = 1\n");
    set_config_int("VELDOR_SOUND", "vcc_theme", 5);
    flush_config_file(); // a module writes in the library's own way
    select_config_file();
    EXPECT_EQ(on_disk("VELDOR_SOUND", "vcc_theme"), 5);
    folder.write("other.cfg", "[game]\nscore = 1\n");
    set_config_file("other.cfg");
    set_config_int("game", "score", 2);
    flush_settings();
    EXPECT_EQ(on_disk("VELDOR_SOUND", "vcc_theme"), 5);
    EXPECT_EQ(file().find("game"), std::string::npos) << file();
    EXPECT_NE(folder.read("other.cfg").find("score = 2"), std::string::npos);
}

TEST_F(Store, AFileThatCannotBeWrittenCostsOneLogLineAndNoValue) {
    begin("[VELDOR_BATTLE]\nplayer_name = Me\n");
    std::filesystem::create_directories("data/configs/vcc.cfg.new/x"); // nobody, not even root, can write that file
    const std::string before = file();
    for (int volume = 1; volume <= 3; ++volume) {
        set_config_int("VELDOR_SOUND", "hq_snd_volume", volume);
        flush_settings();
    }
    flush_config_file(); // the library itself must have no file to spoil any more
    EXPECT_EQ(file(), before);
    EXPECT_EQ(get_config_int("VELDOR_SOUND", "hq_snd_volume", 0), 3);
    const std::string log = folder.log();
    EXPECT_NE(log.find("Cannot write data/configs/vcc.cfg"), std::string::npos);
    EXPECT_EQ(log.find("Cannot write"), log.rfind("Cannot write"));

    std::filesystem::remove_all("data/configs/vcc.cfg.new");
    flush_settings();
    EXPECT_EQ(on_disk("VELDOR_SOUND", "hq_snd_volume"), 3);
    EXPECT_STREQ(get_config_string("VELDOR_BATTLE", "player_name", ""), "Me");
}

/// Two values that always change together tell a whole file from a part of one.
TEST_F(Store, AKilledProgramNeverLeavesPartOfAFile) {
    std::string text = "# first line\n[VELDOR_SOUND]\nhq_theme = 0\n";
    for (int i = 0; i < 40; ++i)
        text += "filler" + std::to_string(i) + " = " + std::string(1000, 'x') + "\n";
    begin(text + "\n[VELDOR_BATTLE]\nplayer_name = 0\n# last line\n");
    const std::size_t smallest = file().size();
    std::minstd_rand random(20);
    int last = 0;
    for (int kill_number = 0; kill_number < 40; ++kill_number) {
        int saved[2] = {-1, -1};
        ASSERT_EQ(::pipe(saved), 0);
        const pid_t writer = ::fork();
        ASSERT_GE(writer, 0);
        if (writer == 0) {
            for (int value = last + 1;; ++value) {
                set_config_int("VELDOR_SOUND", "hq_theme", value);
                set_config_int("VELDOR_BATTLE", "player_name", value);
                flush_settings();
                if (::write(saved[1], "x", 1) != 1)
                    ::_exit(1);
            }
        }
        char first = 0;
        ASSERT_EQ(::read(saved[0], &first, 1), 1);
        ::usleep(static_cast<useconds_t>(random() % 10000));
        ::kill(writer, SIGKILL);
        ::waitpid(writer, nullptr, 0);
        ::close(saved[0]);
        ::close(saved[1]);
        ASSERT_GE(file().size(), smallest);
        ASSERT_TRUE(file().starts_with("# first line\n") && file().ends_with("# last line\n")) << file();
        const int value = on_disk("VELDOR_SOUND", "hq_theme");
        ASSERT_EQ(value, get_config_int("VELDOR_BATTLE", "player_name", -1));
        ASSERT_GT(value, last) << "a save that was reported done is lost";
        last = value;
    }
}

TEST_F(Store, ANewKeyOfAnySectionIsFoundAgain) {
    begin("[a]\nx=1\n[b]\ny=1\n# note\n[c]\n\nz=1\n[d]\nz=1");
    for (const char* const section : {"a", "b", "c", "d"}) {
        set_config_int(section, "new", 7);
        EXPECT_EQ(get_config_int(section, "new", 0), 7) << section;
        EXPECT_EQ(on_disk(section, "new"), 7) << section;
    }
    EXPECT_EQ(file(), "[a]\nx=1\nnew = 7\n\n[b]\ny=1\n# note\nnew = 7\n\n[c]\n\nz=1\nnew = 7\n[d]\nz=1\nnew = 7\n");
}

TEST(ConfigText, ChangesTouchTheirLinesAlone) {
    struct Case {
        const char *text, *section, *key;
        std::optional<std::string> value;
        const char* changed;
    };
    const Case cases[] = {
        {"", "s", "k", "1", "[s]\nk = 1\n"},
        {"[a]\nx=1", "s", "k", "1", "[a]\nx=1\n\n[s]\nk = 1\n"},
        {"[S]\n# k=0\nK=0\nk=2\n", "s", "k", "1", "[S]\n# k=0\nk = 1\nk=2\n"},
        {"k=0\n[a]\nk=0\n[s]\n", "s", "k", "1", "k=0\n[a]\nk=0\n[s]\nk = 1\n"},
        {"[s]\nkk=0\n\n\n[a]\n", "s", "k", "1", "[s]\nkk=0\nk = 1\n\n\n[a]\n"},
        {"[s]\nk=0\n", "s", "k", "1.2.3\n[evil]", "[s]\nk = 1.2.3\n"},
        {"[s]\nk=0\nj=1\n", "s", "k", std::nullopt, "[s]\nj=1\n"},
        {"[s]\nj=1\n", "s", "k", std::nullopt, "[s]\nj=1\n"},
        {"[s\nk=0\n", "s", "k", "1", "[s\nk=0\n\n[s]\nk = 1\n"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(apply_changes(c.text, std::vector{ConfigChange{c.section, c.key, c.value}}), c.changed) << c.text;
}

TEST(Rows, AreFoundByEveryNameOfTheirs) {
    const std::pair<const char*, bool> cases[] = {
        {"font0_name", true}, {"FONT10_space", true}, {"font11_name", false}, {"font01_name", false},
        {"font_name", false}, {"font-1_name", false}, {"hq_theme", false},    {"", false}};
    for (const auto& [key, known] : cases)
        EXPECT_EQ(find_setting_row("VELDOR_VCC", key) != nullptr, known) << key;
    EXPECT_EQ(find_setting_row("veldor_sound", "HQ_theme_default"), find_setting_row("VELDOR_SOUND", "hq_theme"));
    EXPECT_EQ(find_setting_row("VELDOR_GRAPHICS", "resolution_default"), nullptr) << "a reset leaves it alone";
}

TEST(Rows, AreTheTableOfTheDocument) {
    const std::filesystem::path name = VELDOR_SOURCE_DIR "/docs/settings.md";
    const auto read = [&] {
        std::ifstream in(name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    };
    const std::string document = read();
    const std::size_t table = document.find("## `[");
    ASSERT_NE(table, std::string::npos) << name;
    if (std::getenv("VELDOR_WRITE_DOCS") != nullptr) // renews the document
        std::ofstream(name, std::ios::binary) << document.substr(0, table) << settings_table();
    EXPECT_EQ(read().substr(table), settings_table()) << "run this test with VELDOR_WRITE_DOCS=1 to renew " << name;
}

} // namespace
} // namespace vcc
