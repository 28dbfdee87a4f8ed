// What the action codes make of the settings, by left click, right click and choice, with sound and display as they
// may be.
#include "cc/actions.h"
#include "cc/connectors.h"
#include "cc/option_looks.h"
#include "cc/options_screen.h"
#include "cc/screens.h"
#include "cc/sets.h"
#include "core/scope.h"
#include "core/text.h"
#include "display/graphics_mode.h"
#include "platform/desktop.h"
#include "sound/music.h"
#include "sound/sound.h"
#include "support/screen_world.h"
#include "support/wav_file.h"

static AUDIOSTREAM the_stream;
static int streams_opened = 0;

extern "C" {
AUDIOSTREAM* play_audio_stream(int, int, int, int, int, int) {
    ++streams_opened;
    return &the_stream;
}
void stop_audio_stream(AUDIOSTREAM*) {}
void* get_audio_stream_buffer(AUDIOSTREAM*) {
    return nullptr;
}
}

namespace vcc {

/// The desktop opens everything.
int platform::open_document(const std::string&) {
    return document_opened;
}
bool platform::show_message(const std::string&) {
    return false;
}

namespace {

class Actions : public test::ScreenWorld {
protected:
    Actions() {
        folder.write("sounds/theme.wav", test::WavFile().fmt(8, 1).data("0123456789"));
        sound_directory = "sounds";
        for (std::size_t i = first_theme_entry; i < sound_entries.size(); ++i)
            sound_entries[i] = {"Theme", "theme.wav", nullptr};
        options_set.slots.assign(options_slot::count, Slot{});
        options_set.toggles = options_set.slots;
        settings = {};
        theme_loop = {1, 1, 1, 1};
        number_of_themes = 11;
        sound_on = music_on = 1;
        cc_screen = CcScreen::options;
        screen_mode_range = ModeRange::both;
        options_screen.selected_module = Module::control_centre;
        current_theme = -1;
        for (int moved_to : {1, 2})
            options_screen.point(target, moved_to);
    }

    /// Lays the value buttons out in rows of 20 pixels, in the colour 13; a marked value has the colour 12.
    void lay_out_values() {
        for (int i = 0; i < value_entry_limit; ++i) {
            Slot& button = option_slot(value_button(i));
            button.font = 6;
            button.dest_x = 500;
            button.dest_y = 100 + 20 * i;
            button.fore_colour = button.back_colour = 13;
            option_toggle(value_record(i)) = button;
            option_toggle(value_record(i)).fore_colour = 12;
        }
    }
    /// The values that are drawn in a colour.
    std::vector<int> values_in(int colour) const {
        std::vector<int> values;
        for (int i = 0; i < value_entry_limit; ++i) {
            int pixels = 0;
            for (int at = 0; at < 200 * 20; ++at)
                pixels += getpixel(target, 500 + at % 200, 100 + 20 * i + at / 200) == pixel_of(colour);
            if (pixels > 0)
                values.push_back(i);
        }
        return values;
    }

    /// A left click on a slot that carries `code`; the record behind it carries `value`.
    ScreenOutcome click(int code, int value = 0) {
        options_set.slots[22].action = code;
        options_set.slots[23].action = value;
        return carry_out_action(target, options_set, 22);
    }

    test::StandInDisplay display;
    BITMAP* target = picture.get();
};

TEST_F(Actions, RowsStepRoundAndTakeAChoiceIfTheirConditionsAreMet) {
    for (const OptionRow& option : option_rows()) {
        if (option.row == Row::depth)
            continue; // follows the display, see below
        const int top = offered_values(option) - 1;
        const auto values_after = [&] {
            std::vector<int> values;
            const auto note = [&] { values.push_back(option.get(Module::control_centre)); };
            option.setting(Module::control_centre) = top;
            click(option.step_code);
            note();
            step_value(target, options_set, 22, false);
            note();
            click(option.choose_code, 0);
            note();
            return values;
        };
        EXPECT_EQ(values_after(), (std::vector{0, top, 0})) << option.name;
        const SwitchSet unmet(option.row == Row::effects ? sound_on : music_on, 0);
        const SwitchSet one_mode(screen_mode_range, ModeRange::window_only);
        if (option.of_sound() || option.row == Row::screen_mode) {
            EXPECT_EQ(values_after(), (std::vector{top, top, top})) << option.name;
        }
    }
}

TEST_F(Actions, DepthFollowsWhatTheDisplayOffers) {
    depth_class = {1, 0, 0};
    for (bool forward : {true, false}) {
        forward ? void(click(11)) : step_value(target, options_set, 22, false);
        EXPECT_EQ(settings.bitmap_depth, 0) << "32 bits in use are not stepped away from";
    }
    depth_class = {0, 0, 1};
    click(11);
    EXPECT_EQ(settings.bitmap_depth, 2) << "24 bits are not offered: it moves on";
    screen_mode_range = ModeRange::full_screen_only;
    click(11);
    EXPECT_EQ(settings.bitmap_depth, 2) << "full screen only: no step forward";
    settings.bitmap_depth = 1;
    options_screen.point(target, 33);
    EXPECT_EQ(settings.bitmap_depth, 2);
    for (int lacking : {56, 58}) {
        EXPECT_EQ(option_slot(lacking).toggle, -1) << lacking;
        EXPECT_EQ(option_slot(lacking).fore_colour, disabled_colour) << lacking;
    }
}

TEST_F(Actions, ValuesFromFilesAreChecked) {
    settings.theme[cc_module] = settings.volumes[cc_module].effects = 5;
    options_set.slots.back().action = 20;
    carry_out_action(target, options_set, options_set.slot_count() - 1); // no record follows it
    for (int value : {-1, 11}) {
        click(22, value);
        click(20, value);
        EXPECT_EQ(settings.theme[cc_module], 5);
        EXPECT_EQ(settings.volumes[cc_module].effects, 5);
    }
    EXPECT_EQ(click(999), std::nullopt);
}

TEST_F(Actions, ThemesPlayAndLoop) {
    settings.theme[cc_module] = 2;
    click(9);
    EXPECT_EQ(current_theme, 3);
    EXPECT_EQ(text_of(options_set.slots[89].text), "Loop Theme 04 ") << "stepping repeats the chosen theme";
    click(38);
    EXPECT_TRUE(is_hidden(options_set.slots[89])) << "all themes, one after another";
    folder.write("sounds/theme.wav", "no theme");
    click(9);
    EXPECT_EQ(options_set.slots[26].toggle, -1) << "the controls of music that cannot be played";
}

TEST_F(Actions, SelectingAModuleShowsAndPlaysItsSettings) {
    settings.volumes[factory_module] = {6, 2};
    settings.theme[factory_module] = 7;
    options_screen.option_row = Row::depth;
    click(32);
    EXPECT_EQ(options_screen.marked_value, 6) << "of the effects, the module's first row";
    EXPECT_EQ(sfx_volume, 150);
    EXPECT_EQ(music_volume, 50);
    EXPECT_EQ(current_theme, 7);
    click(7);
    EXPECT_EQ(sfx_volume, 175);
}

TEST_F(Actions, PanelShowsWhatTheMachineOffers) {
    lay_out_values();
    number_of_themes = 1;
    screen_mode_range = ModeRange::full_screen_only;
    for (const auto& [row, first, last] :
         {std::tuple(Row::theme, 0, 0), {Row::screen_mode, 1, 1}, {Row::resolution, 0, 4}}) {
        clear_bitmap(target);
        options_screen.draw_row(target, *find_row(row));
        for (int value = 0; value < value_entry_limit; ++value)
            EXPECT_EQ(is_hidden(option_slot(value_button(value))), value < first || value > last) << value;
    }
    EXPECT_EQ(values_in(13), (std::vector{1, 2, 3, 4})) << "all but the marked one";
    EXPECT_EQ(values_in(disabled_colour), std::vector<int>());
}

TEST_F(Actions, AResetInAnotherDepthLoadsThePicturesAgain) {
    std::filesystem::create_directories("images");
    PALETTE palette{};
    clear_to_color(target, 0xFFFFFF);
    save_pcx("images/a.pcx", target, palette);
    save_pcx("images/low.pcx", BitmapPtr(create_bitmap(800, 599)).get(), palette);
    folder.write("tools/vcc.buf", "+0\nimages/a.pcx\n");
    const SwitchSet smooth(anti_aliased_text, 1);
    const SwitchSet silent(sound_on, 0);
    options_screen.option_row = Row::message_delay;
    lay_out_values();
    set_color_depth(16);
    EXPECT_EQ(click(50), std::nullopt);
    EXPECT_EQ(bitmap_color_depth(target), 16);
    EXPECT_EQ(values_in(12), std::vector{1}) << "the value is marked";
    EXPECT_EQ(values_in(0), std::vector<int>()) << "smoothed text stands on its background";
    folder.write("tools/vcc.buf", "+0\nimages/low.pcx\n");
    set_color_depth(32);
    EXPECT_EQ(click(50), ScreenResult::leave) << "the screen's is too low";
    EXPECT_EQ(target, nullptr);
}

TEST_F(Actions, AResetExplainsTheRowThatItMarks) {
    lay_out_values();
    for (const auto& [sound, row, value] : {std::tuple(1, Row::effects, 8), {0, Row::message_delay, 1}}) {
        sound_on = sound;
        options_screen.option_row = options_screen.info_row = Row::message_delay;
        settings.message_delay = 3;
        clear_bitmap(target); // as the window under the values would
        options_screen.draw_row(target, *find_row(Row::message_delay));
        EXPECT_EQ(values_in(12), std::vector{3});
        clear_bitmap(target);
        click(50);
        EXPECT_EQ(options_screen.info_row, row);
        EXPECT_EQ(values_in(12), std::vector{value});
    }
}

TEST_F(Actions, TheLoopButtonWorksOrIsDrawnAway) {
    options_screen.point(target, 26);
    EXPECT_EQ(options_set.slots[86].toggle, 86);
    click(34);
    EXPECT_EQ(options_set.slots[86].toggle, 86) << "the module is selected already";
    Slot& button = options_set.slots[86];
    button.dest_x = button.dest_y = 300;
    button.box_width = button.box_height = 20;
    button.fore_colour = button.back_colour = 12;
    text_windows[value_window] = {};
    text_windows[value_window].colour = 13;
    text_windows[value_window].right = text_windows[value_window].bottom = 60;
    draw_option_slot(target, 86);
    ASSERT_EQ(at(310, 310), pixel_of(12));
    click(18);
    EXPECT_NE(at(310, 310), pixel_of(12)) << "the manual hides it";
}

TEST_F(Actions, AButtonWithoutPressedLookDrawsNothingForIt) {
    options_set.slots[0].graphic = options_set.toggles[0].graphic = 1; // the background fills the screen
    options_set.slots[0].box_width = options_set.toggles[0].box_width = 800;
    options_set.slots[0].box_height = options_set.toggles[0].box_height = 600;
    test::put_buffer(0, 800, 600, 0xFF8040);
    click(17);
    click(7);
    step_value(target, options_set, 22, false);
    EXPECT_EQ(at(799, 599), 0);
    options_set.slots[22].activated = 0;
    options_screen.select_module(target, Module::factory);
    EXPECT_EQ(at(799, 599), 0);
}

TEST_F(Actions, WithoutSoundTheFirstRowIsOneThatTheMachineOffers) {
    sound_on = music_on = 0;
    for (const auto& [range, first] :
         {std::pair(ModeRange::both, Row::screen_mode), {ModeRange::window_only, Row::depth}}) {
        screen_mode_range = range;
        options_screen.open();
        options_screen.select_module(target, Module::control_centre);
        mouse_x = 700;
        on_pointer_over(target, 29); // current, though nobody points at it
        EXPECT_EQ(options_screen.option_row, first);
        on_pointer_over(target, 36); // by a key
        on_pointer_over(target, 29);
        EXPECT_EQ(options_screen.option_row, Row::screen_mode);
    }
}

TEST_F(Actions, TheThemeThatStreamsDecidesWhatIsShownAndStarted) {
    options_screen.option_row = Row::theme;
    settings.theme[cc_module] = options_screen.marked_value = 2;
    ASSERT_TRUE(options_screen.play_theme());
    start_theme(3, music_volume); // the end of theme 2, while a button shows its pressed look
    EXPECT_EQ(current_theme, 2);
    const int before = streams_opened;
    ASSERT_TRUE(options_screen.play_theme());
    EXPECT_EQ(streams_opened, before + 1) << "theme 3 would stream on";
    theme_shown = 3; // the next one
    cc_screen = CcScreen::menu;
    follow_music(target);
    EXPECT_EQ(settings.theme[cc_module], 3);
    EXPECT_EQ(options_screen.marked_value, 2) << "no panel on the menu";
}

TEST_F(Actions, PointingShowsRows) {
    on_pointer_over(target, 26);
    EXPECT_EQ(options_screen.option_row, Row::theme);
    EXPECT_EQ(options_set.slots[86].toggle, 86);
    on_pointer_over(target, 48);
    EXPECT_EQ(options_set.slots[86].toggle, -1) << "the loop button belongs to the theme row";
    music_on = 0;
    on_pointer_over(target, 26);
    EXPECT_EQ(options_screen.option_row, Row::keyboard);
    cc_screen = CcScreen::help;
    on_pointer_over(target, 22);
    EXPECT_EQ(options_screen.option_row, Row::keyboard) << "nothing under a help page";
    options_screen.marked_value = 99;
    draw_connectors(target, options_screen); // has no line to this value
}

} // namespace
} // namespace vcc
