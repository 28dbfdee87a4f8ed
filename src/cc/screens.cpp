#include "cc/screens.h"

#include "cc/actions.h"
#include "cc/options_records.h"
#include "cc/options_screen.h"
#include "core/alert.h"
#include "core/installation.h"
#include "core/layout.h"
#include "core/log.h"
#include "core/text.h"
#include "display/buffers.h"
#include "display/graphics_mode.h"
#include "display/pointer.h"
#include "interaction/help.h"
#include "interaction/keys.h"
#include "interaction/screen_run.h"
#include "screen/buffer_list.h"
#include "screen/draw.h"
#include "screen/draw_slot.h"
#include "screen/slot_file.h"
#include "screen/status_line.h"
#include "screen/text_window.h"
#include "settings/keyboard_layout.h"
#include "settings/settings.h"
#include "sound/music.h"
#include "sound/sound.h"
#include "text/language.h"

#include <algorithm>

namespace vcc {

int cc_screen = 0;
int theme_display_live = 0;
int depth_at_menu = 0;
SlotSet menu_set, options_set, info_set, message_set;

namespace {

constexpr int menu_state = 0, options_state = 1, leave_state = 45;
constexpr int clear_colour = 7;
constexpr std::size_t field_text_length = 15;

constexpr int fewest_slots = 2;

/// By ScreenKind.
constexpr std::array<SlotSet*, screen_files.size()> sets{&menu_set, &options_set, &info_set, &message_set};

bool load_set(const ScreenFile& file, SlotSet& set) {
    const std::string path = slot_prefix + std::string(file.name) + ".slt";
    if (load_slot_set(path, set) == 0 || set.slot_count() < fewest_slots)
        return false;
    if (set.slot_count() < file.needed) {
        write_log(format_text("Slot file %s has %d slots, %d are needed", path.c_str(), set.slot_count(), file.needed));
        return false;
    }
    return true;
}

/// The options screen addresses toggle records by fixed numbers: those that its file lacks draw nothing.
void complete_toggles(SlotSet& set, int count) {
    Slot hidden{};
    hide(hidden);
    hidden.toggle = -1;
    if (set.toggle_count() < count)
        set.toggles.resize(static_cast<std::size_t>(count), hidden);
}

void fill_fields() {
    const auto fill = [](int field, const auto& setting) {
        store_text(option_slot(field).text, text_of(setting).substr(0, field_text_length));
    };
    fill(options_slot::player_name, settings.player_name);
    fill(options_slot::ip_address, settings.ip_address);
}

const ModuleVolumes& cc_volumes() {
    return settings.volumes[cc_module];
}

void copy_whole(BITMAP* from, BITMAP* to) {
    if (from && to)
        blit(from, to, 0, 0, 0, 0, layout_width, layout_height);
}

/// Keeps the set's background under smoothed text.
void keep_text_background(const SlotSet& set) {
    if (anti_aliased_text)
        copy_whole(graphic_buffer(set.slots.front().buffer), graphic_buffer(text_copy_buffer));
}

void open_help(BITMAP* target, SlotSet& set, int current) {
    theme_display_live = 0;
    if (anti_aliased_text)
        full_redraw = 1;
    show_help({target, graphic_buffer(help_save_buffer), &message_set, &cc_screen,
               &set.slots[static_cast<std::size_t>(current)], [target] { follow_music(target); }});
    if (anti_aliased_text)
        full_redraw = 0;
    theme_display_live = 1;
}

int run_set(BITMAP* target, SlotSet& set) {
    ScreenOwner owner;
    if (cc_screen == options_state)
        owner.drawn = [&] { select_module(target, cc_module); };
    owner.activated = [&](int slot) { return carry_out_action(target, set, slot); };
    owner.help = [&](int slot) { open_help(target, set, slot); };
    owner.right_click = [&](int slot) { step_back(target, set, slot); };
    owner.pointer_over = [&](int slot) { on_pointer_over(target, slot); };
    owner.every_frame = [&] { follow_music(target); };
    return run_screen(target, set, owner);
}

int first_option_row() {
    if (sound_on)
        return row::effects;
    return screen_mode_range >= 3 ? row::screen_mode : row::depth;
}

int run_menu(BITMAP* target) {
    theme_display_live = 0;
    depth_at_menu = settings.bitmap_depth;
    keep_text_background(menu_set);
    return run_set(target, menu_set);
}

bool other_display_mode_chosen() {
    return (settings.screen_mode != 0) != (fullscreen != windowed);
}

/// Builds the display again in the chosen depth; false when the pictures cannot be loaded again.
bool change_depth(BITMAP*& target) {
    const EffectsHeld held;
    if (!rebuild_display(other_display_mode_chosen() ? 1 : 0))
        return true;
    if (load_graphic_buffers(path::buffer_list) == 0 || !graphic_buffer(screen_buffer)) {
        show_alert("VCC: Error loading Graphicbuffers!");
        write_log("VCC: Error loading Graphicbuffers\n");
        return false;
    }
    target = graphic_buffer(screen_buffer);
    set_status_target(target);
    prepare_background_copies();
    install_mouse_and_pointer();
    Slot& label = options_set.slots[options_slot::loop_label];
    hide(label);
    draw_slots(target, options_set.slots);
    update_screen(target);
    show(label);
    return true;
}

void restart_cc_music() {
    if (!needs_met(Needs::music))
        return;
    theme_display_live = 0;
    sfx_volume = cc_volumes().effects * volume_step;
    music_volume = cc_volumes().music * volume_step;
    const int theme = settings.theme[cc_module];
    if (play_theme(theme))
        show_loop_label(cc_module, theme + 1);
}

/// What follows a visit of the options screen; returns the next state.
int after_options(BITMAP*& target, int next) {
    load_settings();
    if (settings.bitmap_depth != depth_at_menu) {
        if (!change_depth(target))
            return leave_state;
    } else if (other_display_mode_chosen() && mode_range == 3) {
        switch_display_mode(1);
    }
    select_module(target, cc_module);
    restart_cc_music();
    apply_keyboard_layout();
    fill_fields();
    give_normal_look(options_slot::first_selector + selected_module);
    return next;
}

int run_options(BITMAP*& target) {
    hide_loop_button();
    selected_module = hq_module;
    option_row = first_option_row();
    keep_text_background(options_set);
    const int next = run_set(target, options_set);
    return after_options(target, next);
}

void menu_pointer_over(BITMAP* target, int slot) {
    const auto found = std::ranges::find(menu_slot::previews, slot, &menu_slot::Preview::slot);
    if (found == menu_slot::previews.end())
        return;
    const EffectsHeld held;
    draw_slot(target, menu_set.slots, found->picture);
}

} // namespace

int load_cc_slot_sets() {
    bool failed = false;
    for (std::size_t i = 0; i < sets.size(); ++i)
        failed = !load_set(screen_files[i], *sets[i]) || failed;
    if (failed)
        return leave_code;
    complete_toggles(options_set, options_slot::count);
    return 0;
}

void free_cc_slot_sets() {
    for (SlotSet* set : sets)
        *set = {};
}

void setup_cc_screens() {
    set_theme_order_source([] {
        return ThemeOrder{theme_loop[static_cast<std::size_t>(selected_module)] == 1, number_of_themes};
    });
    selected_module = cc_module; // the music follows this module's loop from its first buffer on
    load_settings();
    write_keyboard_layout();
    if (!sound_on)
        disable_sound_controls();
    if (!needs_met(Needs::music))
        disable_music_controls();
    fill_fields();
    if (sound_on)
        sfx_volume = cc_volumes().effects * volume_step;
    if (!music_on)
        return;
    current_theme = settings.theme[cc_module];
    music_volume = cc_volumes().music * volume_step;
    play_theme(current_theme);
}

void prepare_background_copies() {
    for (int copy : {window_copy_buffer, info_copy_buffer})
        copy_whole(graphic_buffer(backdrop_buffer), graphic_buffer(copy));
    const auto assign = [](int window, int buffer) {
        text_windows[static_cast<std::size_t>(window)].background_buffer = buffer;
        text_windows[static_cast<std::size_t>(window)].background_bitmap = graphic_buffer(buffer);
    };
    for (int window : {group_window, value_window, module_window, sound_group_window})
        assign(window, window_copy_buffer);
    assign(info_window, info_copy_buffer);
}

int run_cc_screens(BITMAP* target) {
    prepare_background_copies();
    help_line_length = help_line_standard;
    current_theme = theme_shown = settings.theme[cc_module];
    select_module(target, cc_module);
    if (needs_met(Needs::music)) {
        show_loop_label(cc_module, settings.theme[cc_module] + 1);
        const EffectsHeld held;
        const OptionRow& themes = *find_row(row::theme);
        show_row_panel(target, themes);
    }
    clear_to_colour(target, clear_colour);
    int state = menu_state;
    while (true) {
        theme_display_live = 1;
        cc_screen = state;
        switch (state) {
        case menu_state:
            state = run_menu(target);
            break;
        case options_state:
            state = run_options(target);
            break;
        case 2:
        case 3:
        case 4:
            return state - 2;
        case leave_state:
            return leave_state;
        default:
            write_log(format_text("Unknown screen result %d, back to the main menu", state));
            state = menu_state;
        }
    }
}

void on_pointer_over(BITMAP* target, int slot) {
    if (cc_screen == menu_state)
        menu_pointer_over(target, slot);
    else if (cc_screen == options_state)
        options_pointer_over(target, slot);
}

void follow_music(BITMAP* target) {
    if (!needs_met(Needs::music) || !music_voice_running())
        return;
    const int playing = feed_music();
    if (theme_loop[static_cast<std::size_t>(selected_module)] != 0 && playing != current_theme) {
        current_theme = playing;
        settings.theme[static_cast<std::size_t>(selected_module)] = playing;
        if (option_row == row::theme && music_on && theme_display_live) {
            show_row_panel(target, *find_row(row::theme));
            update_screen(target);
        }
    }
    if (!music_on)
        disable_music_controls();
}

} // namespace vcc
