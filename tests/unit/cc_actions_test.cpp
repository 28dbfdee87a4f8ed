// What every action code makes of the settings, by left click, right click and choice, with sound and display as they
// may be.
#include "cc/actions.h"
#include "cc/options_screen.h"
#include "cc/screens.h"
#include "display/graphics_mode.h"
#include "sound/music.h"
#include "sound/sound.h"
#include "support/screen_world.h"
#include "support/slots.h"
#include "support/wav_file.h"

static AUDIOSTREAM the_stream;

extern "C" {
AUDIOSTREAM* play_audio_stream(int, int, int, int, int, int) {
    return &the_stream;
}
void stop_audio_stream(AUDIOSTREAM*) {}
void* get_audio_stream_buffer(AUDIOSTREAM*) {
    return nullptr;
}
void voice_set_volume(int, int) {}
void voice_set_playmode(int, int) {}
void voice_start(int) {}
void voice_stop(int) {}
int install_keyboard() {
    return 0;
}
void remove_keyboard() {}
}

namespace vcc {
namespace {

class Actions : public test::ScreenWorld {
protected:
    Actions() {
        folder.write("sounds/theme.wav", test::WavFile().fmt(8, 1).data("0123456789"));
        folder.write("data/configs/vcc.cfg", "[VELDOR_BATTLE]\nplayer_name = Stored\n");
        select_config_file();
        sound_directory = "sounds";
        for (std::size_t i = first_theme_entry; i < sound_entries.size(); ++i)
            sound_entries[i] = {"Theme", "theme.wav", nullptr};
        options_set.slots.assign(options_slot::required_count, test::make_slot(""));
        options_set.toggles = options_set.slots;
        info_set.slots.assign(13, test::make_slot(""));
        settings = {};
        theme_loop = {1, 1, 1, 1};
        number_of_themes = 11;
        sound_on = sfx_allowed = cc_screen = 1;
        music_on = 11;
        screen_mode_range = mode_range = 3;
        depth_class = {0, 0, 1};
        selected_module = cc_module;
        option_row = 0;
        current_theme = -1;
    }
    ~Actions() override { stop_music(); }

    /// A left click on a slot that carries `code`; the record behind it carries `value`.
    std::optional<int> click(int code, int value = 0) {
        options_set.slots[22].action = code;
        options_set.slots[23].action = value;
        return carry_out_action(picture.get(), options_set, 22);
    }
    void right_click(int code) {
        options_set.slots[22].action = code;
        step_back(picture.get(), options_set, 22);
    }
    void point_at(int slot) { on_pointer_over(picture.get(), slot); }
    void show_panel(int row) { show_value_panel(picture.get(), *find_row(row)); }

    test::StandInDisplay display;
};

TEST_F(Actions, StepStepBackAndChooseEveryRow) {
    const struct {
        int row, start, forward, back, chosen;
    } cases[] = {{row::effects, 10, 0, 9, 4},     {row::effects, 0, 1, 10, 10},     {row::music, 10, 0, 9, 0},
                 {row::music, 3, 4, 2, 7},        {row::theme, 10, 0, 9, 3},        {row::theme, 9, 10, 8, 0},
                 {row::theme, 0, 1, 10, 10},      {row::screen_mode, 0, 1, 1, 1},   {row::screen_mode, 1, 0, 0, 0},
                 {row::resolution, 4, 0, 3, 2},   {row::resolution, 0, 1, 4, 4},    {row::animations, 1, 0, 0, 0},
                 {row::sprite_speed, 3, 0, 2, 1}, {row::message_delay, 0, 1, 3, 3}, {row::message_detail, 2, 3, 1, 0},
                 {row::keyboard, 1, 0, 0, 1},     {row::keyboard, 3, 0, 2, 0}};
    for (const auto& c : cases) {
        const OptionRow& option = *find_row(c.row);
        option.set(c.start);
        click(option.step_code);
        EXPECT_EQ(option.get(), c.forward) << "step, row " << c.row << " from " << c.start;
        EXPECT_EQ(option_row, c.row);
        EXPECT_EQ(marked_value, c.forward);
        option.set(c.start);
        right_click(option.step_code);
        EXPECT_EQ(option.get(), c.back) << "back, row " << c.row << " from " << c.start;
        click(option.choose_code, c.chosen);
        EXPECT_EQ(option.get(), c.chosen) << "choose, row " << c.row;
        EXPECT_EQ(sfx_allowed, 1);
    }
}

TEST_F(Actions, ConditionsThatAreNotMetChangeNothing) {
    const struct {
        int row, sound, music, range;
    } cases[] = {{row::effects, 0, 11, 3},    {row::music, 0, 11, 3}, {row::music, 1, 0, 3},
                 {row::theme, 0, 11, 3},      {row::theme, 1, 0, 3},  {row::screen_mode, 1, 11, 1},
                 {row::screen_mode, 1, 11, 2}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.row << ": " << c.sound << " " << c.music << " " << c.range);
        sound_on = c.sound;
        music_on = c.music;
        screen_mode_range = c.range;
        option_row = row::keyboard;
        const OptionRow& option = *find_row(c.row);
        option.set(1);
        click(option.step_code);
        right_click(option.step_code);
        click(option.choose_code, 0);
        EXPECT_EQ(option.get(), 1);
        EXPECT_EQ(option_row, row::keyboard);
    }
}

TEST_F(Actions, VolumesReachTheMixer) {
    settings.volumes[cc_module] = {10, 1};
    click(7);
    EXPECT_EQ(sfx_volume, 0);
    right_click(7);
    EXPECT_EQ(sfx_volume, 250);
    click(20, 4);
    EXPECT_EQ(sfx_volume, 100);
    click(8);
    EXPECT_EQ(music_volume, 50);
    click(21, 9);
    EXPECT_EQ(music_volume, 225);
}

TEST_F(Actions, DepthFollowsWhatTheDisplayOffers) {
    const auto depth_after = [this](int depth, const auto& act) {
        settings.bitmap_depth = depth;
        act();
        return settings.bitmap_depth;
    };
    const auto step = [this] { click(11); };
    const auto back = [this] { right_click(11); };
    const auto choose_16 = [this] { click(25, 2); };
    depth_class = {1, 0, 0};
    EXPECT_EQ(depth_after(0, step), 0) << "32 bits in use are not stepped away from";
    EXPECT_EQ(depth_after(0, back), 0);
    EXPECT_EQ(depth_after(0, choose_16), 2) << "a choice is; its panel finds no neighbour";
    depth_class = {0, 0, 1};
    EXPECT_EQ(depth_after(2, step), 0) << "its neighbour, 24 bits, is not offered either";
    EXPECT_EQ(depth_after(0, step), 2) << "0 goes to 1, which moves on to the depth in use";
    screen_mode_range = 1;
    EXPECT_EQ(depth_after(2, step), 2) << "full screen only: no step forward";
}

TEST_F(Actions, ValuesFromFilesAreChecked) {
    for (int value : {-1, 11, 100000}) {
        settings.theme[cc_module] = settings.volumes[cc_module].effects = 5;
        click(22, value);
        click(20, value);
        EXPECT_EQ(settings.theme[cc_module], 5);
        EXPECT_EQ(settings.volumes[cc_module].effects, 5);
    }
    options_set.slots.back().action = 20;
    EXPECT_EQ(carry_out_action(picture.get(), options_set, options_set.slot_count() - 1), std::nullopt)
        << "no record follows it";
}

TEST_F(Actions, ThemesPlayAndLoop) {
    settings.theme[cc_module] = 2;
    click(9);
    EXPECT_EQ(settings.theme[cc_module], 3);
    EXPECT_EQ(current_theme, 3);
    EXPECT_EQ(theme_loop[cc_module], 0) << "stepping repeats the chosen theme";
    EXPECT_EQ(text_of(options_set.slots[89].text), "Loop Theme 04 ");
    click(38);
    EXPECT_EQ(theme_loop[cc_module], 1);
    EXPECT_EQ(text_of(options_set.toggles[89].text), "Loop All Themes");
    EXPECT_TRUE(is_hidden(options_set.slots[89]));
    EXPECT_FALSE(is_hidden(options_set.toggles[89]));
    option_row = row::music;
    click(38);
    EXPECT_EQ(theme_loop[cc_module], 1) << "only on the theme row";
    folder.write("sounds/theme.wav", "no theme");
    click(9);
    EXPECT_EQ(music_on, 0);
    EXPECT_EQ(options_set.slots[26].toggle, -1);
    EXPECT_EQ(options_set.slots[24].fore_colour, disabled_colour);
}

TEST_F(Actions, SelectingAModuleShowsAndPlaysItsSettings) {
    settings.volumes[factory_module] = {6, 2};
    settings.theme[factory_module] = 7;
    option_row = row::depth;
    click(32);
    EXPECT_EQ(selected_module, factory_module);
    EXPECT_EQ(option_row, row::effects);
    EXPECT_EQ(marked_value, 6);
    EXPECT_EQ(sfx_volume, 150);
    EXPECT_EQ(music_volume, 50);
    EXPECT_EQ(current_theme, 7);
    settings.volumes[factory_module].effects = 1;
    select_module(picture.get(), factory_module);
    EXPECT_EQ(sfx_volume, 150) << "the selected module again changes nothing";
}

TEST_F(Actions, EndsOfTheScreen) {
    for (const auto& [code, result] : {std::pair(1, 45), {2, 2}, {3, 3}, {4, 4}, {5, 1}, {30, 0}, {998, 0}})
        EXPECT_EQ(click(code), result) << code;
    for (int code : {0, 35, 49, 999, -7})
        EXPECT_EQ(click(code), std::nullopt);
    store_text(options_set.slots[45].text, "Rhea   ");
    store_text(options_set.slots[53].text, "          ");
    EXPECT_EQ(click(6), 0);
    EXPECT_EQ(text_of(settings.player_name), "Rhea");
    for (const char* line : {"player_name = Rhea", "ip_address = ."})
        EXPECT_NE(folder.read("data/configs/vcc.cfg").find(line), std::string::npos);
}

TEST_F(Actions, PanelShowsWhatTheMachineOffers) {
    const Slot &first = options_set.slots[56], &second = options_set.slots[58], &third = options_set.slots[60];
    for (const auto& [range, window, full] : {std::tuple(3, true, true), {2, true, false}, {1, false, true}}) {
        screen_mode_range = range;
        options_set.slots[56].action = options_set.slots[58].action = 23;
        show_panel(row::screen_mode);
        EXPECT_EQ(is_hidden(first), !window) << range;
        EXPECT_EQ(is_hidden(second), !full) << range;
        EXPECT_EQ(first.action, range == 2 ? 0 : 23) << range;
        EXPECT_EQ(second.action, range == 1 ? 0 : 23) << range;
        EXPECT_TRUE(is_hidden(third));
        EXPECT_EQ(third.toggle, -1);
    }
    number_of_themes = 3;
    show_panel(row::theme);
    EXPECT_EQ(text_of(third.text), "Theme");
    EXPECT_EQ(text_of(options_set.slots[62].text), "");
    EXPECT_TRUE(is_hidden(options_set.slots[62]));
    show_panel(row::depth);
    EXPECT_EQ(first.toggle, -1) << "32 bits are not offered";
    EXPECT_EQ(second.fore_colour, disabled_colour);
    EXPECT_EQ(third.toggle, 60);
}

TEST_F(Actions, PointingShowsRows) {
    for (int slot : {22, 24, 26, 29, 33, 36, 38, 40, 42, 48}) {
        point_at(slot);
        EXPECT_EQ(option_row, row_of_button(slot)->row) << slot;
        EXPECT_EQ(info_row, option_row) << slot;
        EXPECT_EQ(options_set.slots[86].toggle, slot == 26 ? 86 : -1) << "the loop button belongs to the theme row";
    }
    point_at(31);
    EXPECT_EQ(option_row, row::keyboard) << "the resolution must be clicked";
    click(12);
    EXPECT_EQ(info_row, row::resolution);
    music_on = 0;
    point_at(26);
    EXPECT_EQ(option_row, row::resolution);
    point_at(12);
    EXPECT_EQ(option_row, row::effects) << "the selector leads back to the sound rows";
    cc_screen = -1;
    point_at(48);
    EXPECT_EQ(option_row, row::effects) << "nothing under a help page";
}

} // namespace
} // namespace vcc
