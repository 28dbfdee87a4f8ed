#include "core/files.h"
#include "core/text.h"
#include "folder_test.h"
#include "settings/config_text.h"
#include "settings/keyboard_layout.h"
#include "settings/rows.h"
#include "settings/settings.h"
#include "sound/sound.h"

#include <csignal>
#include <random>
#include <sys/wait.h>

namespace vcc {
namespace {

constexpr const char* config = "data/configs/vcc.cfg";

/// A fresh installation folder, its configuration file selected.
class Store : public test::FolderTest {
protected:
    Store() {
        flush_settings(); // what an earlier test left unwritten
        sound_on = 1;
        music_on = number_of_themes = 0;
        settings = {};
        begin("");
    }
    ~Store() override {
        for (SoundEntry& entry : sound_entries)
            entry.file.clear();
    }
    void begin(std::string_view text) const {
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
};

/// The place of a number that is saved.
int* saved_number(const SettingRow& row) {
    int* const* const place = std::get_if<int*>(&row.place);
    return place != nullptr && row.has(KeyUse::save) ? *place : nullptr;
}

TEST_F(Store, AnEmptyFileGivesTheHardDefaults) {
    load_settings();
    for (std::size_t module = 0; module < module_count; ++module)
        EXPECT_EQ((std::array{settings.volumes[module].effects, settings.volumes[module].music, theme_loop[module]}),
                  (std::array{8, 3, 1}));
    EXPECT_EQ(settings.theme, (std::array{4, 3, 1, 2}));
    EXPECT_EQ((std::array{settings.resolution, settings.bitmap_depth, settings.anti_aliased, settings.brontar_anim,
                          settings.sprite_speed, settings.message_delay, settings.message_detail, settings.keyboard}),
              (std::array{3, 0, 1, 1, 1, 1, 2, 0}));
    EXPECT_EQ(std::pair(int{settings.screen_mode}, frame_rest), std::pair(0, 0));
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
    EXPECT_EQ(std::pair(settings.volumes[hq_module].effects, settings.volumes[cc_module].music), std::pair(10, 0));
    EXPECT_EQ(settings.theme, (std::array{1, 1, 1, 1})) << "two themes, the fourth does not count";
    EXPECT_EQ((std::array{theme_loop[battle_module], int{settings.screen_mode}, settings.bitmap_depth,
                          settings.resolution, frame_rest, settings.keyboard, settings.sprite_speed}),
              (std::array{1, -1, 3, 0, 20, 5, 0}));
    EXPECT_STREQ(settings.player_name, "0123456789abcde");
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
    for (const char* const key : {"yes", "please", "missing"})
        EXPECT_TRUE(config_flag("s", key)) << key;
    for (const char* const key : {"no", "upper", "one", "ye", "empty", "EMPTY", "bare"})
        EXPECT_FALSE(config_flag("s", key)) << key;
    EXPECT_TRUE(config_flag("no such section", "yes"));
}

TEST_F(Store, WhatIsSavedIsLoadedAgain) {
    load_settings();
    std::vector<int> values;
    for (const SettingRow& row : setting_rows())
        if (int* const number = saved_number(row)) { // a value of its own for every number
            *number = row.min + static_cast<int>(values.size()) % (row.max - row.min + 1);
            values.push_back(number == &number_of_themes ? 0 : *number); // music is off when they are loaded
        }
    settings.screen_mode = -1;
    store_text(settings.player_name, "J\xF6rg  X");
    settings.ip_address[0] = '\0';
    save_settings();
    settings = {};
    theme_loop = {};
    load_settings();
    auto value = values.begin();
    for (const SettingRow& row : setting_rows())
        if (const int* const number = saved_number(row)) {
            EXPECT_EQ(*number, *value++) << row.key;
        }
    EXPECT_EQ(on_disk("VELDOR_GRAPHICS", "screen_mode"), -1);
    EXPECT_STREQ(settings.player_name, "J\xF6rg  X");
    EXPECT_STREQ(settings.ip_address, ".");
    EXPECT_EQ(get_config_string("system", "keyboard", ""), keyboard_mapping_file(settings.keyboard));
}

TEST_F(Store, KeysOfTheBattleModuleAreMadeButNeverChanged) {
    begin("[VELDOR_BATTLE]\nmessage_max = -1\nmaxmap_x = 0\n2D_style = old\n");
    save_settings();
    EXPECT_EQ(file().find("maxmap_y"), std::string::npos) << "with the next flush, not before";
    load_settings();
    for (const char* const line :
         {"message_max = 1\n", "maxmap_x = 0\n", "maxmap_y = 34\n", "2D_style = old\n", "3D_map = yes\n"})
        EXPECT_NE(file().find(line), std::string::npos) << line;
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
    EXPECT_EQ((std::array{int{settings.screen_mode}, settings.keyboard}), (std::array{1, 1}));
    EXPECT_EQ(std::pair(settings.resolution, settings.anti_aliased), std::pair(1, 0)) << "not reset";
    EXPECT_STREQ(settings.player_name, "Me");
    EXPECT_EQ(file(), before);
}

TEST_F(Store, TheKeyboardSettingNamesItsMappingFile) {
    for (const auto& [keyboard, name] : {std::pair{3, "fr"}, {5, "uk"}, {0, "us"}, {6, "us"}, {-1, "us"}, {1, "de"}}) {
        settings.keyboard = keyboard;
        write_keyboard_layout();
        EXPECT_EQ(file(), std::string("[system]\nkeyboard = data/configs/") + name + ".cfg\n");
    }
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
    EXPECT_TRUE(logged("Cannot write data/configs/vcc.cfg"));
    EXPECT_EQ(folder.log().find("Cannot write"), folder.log().rfind("Cannot write"));

    std::filesystem::remove_all("data/configs/vcc.cfg.new");
    flush_settings();
    EXPECT_EQ(on_disk("VELDOR_SOUND", "hq_snd_volume"), 3);
    EXPECT_STREQ(get_config_string("VELDOR_BATTLE", "player_name", ""), "Me");
}

/// Two values that always change together tell a whole file from a part of one.
TEST_F(Store, AKilledProgramNeverLeavesPartOfAFile) {
    begin("# first line\n[VELDOR_SOUND]\nhq_theme = 0\nfiller = " + std::string(40000, 'x') +
          "\n\n[VELDOR_BATTLE]\nplayer_name = 0\n# last line\n");
    std::minstd_rand random(20);
    int last = 0;
    for (int kill_number = 0; kill_number < 40; ++kill_number) {
        int saved[2] = {-1, -1};
        ASSERT_EQ(::pipe(saved), 0);
        const pid_t writer = ::fork();
        ASSERT_GE(writer, 0);
        for (int value = last + 1; writer == 0; ++value) { // until it is killed
            set_config_int("VELDOR_SOUND", "hq_theme", value);
            set_config_int("VELDOR_BATTLE", "player_name", value);
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
    const struct {
        const char* text;
        std::optional<std::string> value; // of k in the section s
        const char* changed;
    } cases[] = {
        {"", "1", "[s]\nk = 1\n"},
        {"[a]\nx=1", "1", "[a]\nx=1\n\n[s]\nk = 1\n"},
        {"[S]\n# k=0\nK=0\nk=2\n", "1", "[S]\n# k=0\nk = 1\nk=2\n"},
        {"k=0\n[a]\nk=0\n[s]\n", "1", "k=0\n[a]\nk=0\n[s]\nk = 1\n"},
        {"[s]\nkk=0\n\n\n[a]\n", "1", "[s]\nkk=0\nk = 1\n\n\n[a]\n"},
        {"[s]\nk=0\n", "1.2.3\n[evil]", "[s]\nk = 1.2.3\n"},
        {"[s]\nk=0\nj=1\n", std::nullopt, "[s]\nj=1\n"},
        {"[s]\nj=1\n", std::nullopt, "[s]\nj=1\n"},
        {"[s\nk=0\n", "1", "[s\nk=0\n\n[s]\nk = 1\n"},
    };
    for (const auto& [text, value, changed] : cases)
        EXPECT_EQ(apply_changes(text, std::vector{ConfigChange{"s", "k", value}}), changed) << text;
}

TEST(Rows, AreFoundByEveryNameOfTheirs) {
    for (const char* const key : {"font0_name", "FONT10_space"})
        EXPECT_NE(find_setting_row("VELDOR_VCC", key), nullptr) << key;
    for (const char* const key : {"font11_name", "font01_name", "font_name", "font-1_name", "hq_theme", ""})
        EXPECT_EQ(find_setting_row("VELDOR_VCC", key), nullptr) << key;
    EXPECT_EQ(find_setting_row("veldor_sound", "HQ_theme_default"), find_setting_row("VELDOR_SOUND", "hq_theme"));
    EXPECT_EQ(find_setting_row("VELDOR_GRAPHICS", "resolution_default"), nullptr) << "a reset leaves it alone";
}

TEST(Rows, AreTheTableOfTheDocument) {
    const std::string name = VELDOR_SOURCE_DIR "/docs/settings.md";
    const std::string document = read_file(name).value_or("");
    const std::size_t table = document.find("## `[");
    ASSERT_NE(table, std::string::npos) << name;
    if (std::getenv("VELDOR_WRITE_DOCS") != nullptr)
        std::ofstream(name, std::ios::binary) << document.substr(0, table) << settings_table();
    else
        EXPECT_EQ(document.substr(table), settings_table()) << "run this test with VELDOR_WRITE_DOCS=1 to renew it";
}

} // namespace
} // namespace vcc
