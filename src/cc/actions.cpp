#include "cc/actions.h"

#include "cc/options_records.h"
#include "cc/options_screen.h"
#include "cc/screens.h"
#include "core/clock.h"
#include "core/log.h"
#include "core/text.h"
#include "display/graphics_mode.h"
#include "interaction/screen_run.h"
#include "screen/draw.h"
#include "screen/draw_slot.h"
#include "settings/keyboard_layout.h"
#include "settings/settings.h"
#include "sound/music.h"
#include "sound/sound.h"

#include <algorithm>

namespace vcc {

namespace {

constexpr ActionRow actions[] = {
    {1, ActionKind::end_screen, 45},
    {2, ActionKind::end_screen, 2},
    {3, ActionKind::end_screen, 3},
    {4, ActionKind::end_screen, 4},
    {5, ActionKind::end_screen, 1},
    {6, ActionKind::accept, 0},
    {7, ActionKind::step, 0},
    {8, ActionKind::step, 0},
    {9, ActionKind::step, 0},
    {10, ActionKind::step, 0},
    {11, ActionKind::step, 0},
    {12, ActionKind::step, 0},
    {13, ActionKind::step, 0},
    {14, ActionKind::step, 0},
    {15, ActionKind::step, 0},
    {16, ActionKind::step, 0},
    {17, ActionKind::take_name, 0},
    {18, ActionKind::manual, 0},
    {19, ActionKind::step, 0},
    {20, ActionKind::choose, 0},
    {21, ActionKind::choose, 0},
    {22, ActionKind::choose, 0},
    {23, ActionKind::choose, 0},
    {24, ActionKind::choose, 0},
    {25, ActionKind::choose, 0},
    {26, ActionKind::choose, 0},
    {27, ActionKind::choose, 0},
    {28, ActionKind::choose, 0},
    {29, ActionKind::choose, 0},
    {30, ActionKind::end_screen, 0},
    {31, ActionKind::select_module, hq_module},
    {32, ActionKind::select_module, factory_module},
    {33, ActionKind::select_module, battle_module},
    {34, ActionKind::select_module, cc_module},
    {37, ActionKind::choose, 0},
    {38, ActionKind::loop_theme, 0},
    {50, ActionKind::reset, 0},
    {51, ActionKind::take_address, 0},
    {998, ActionKind::end_screen, 0},
};

const Slot& slot_at(const SlotSet& set, int index) {
    return set.slots[static_cast<std::size_t>(index)];
}
int& theme_setting() {
    return settings.theme[static_cast<std::size_t>(selected_module)];
}
int& loop_setting() {
    return theme_loop[static_cast<std::size_t>(selected_module)];
}
const ModuleVolumes& volumes() {
    return settings.volumes[static_cast<std::size_t>(selected_module)];
}

/// The pressed look, and then the resting look again.
void show_pressed_look(BITMAP* target, const Slot& button) {
    draw_slot(target, options_set.toggles, button.activated);
    update_screen(target);
    wait_ms(pressed_look_ms(button));
    draw_slot(target, options_set.slots, button.activated);
    update_screen(target);
}

void play_selected_theme() {
    music_volume = volumes().music * volume_step;
    play_theme(theme_setting());
}

/// What follows at once from a row's new value.
void apply_value(const OptionRow& option) {
    switch (option.row) {
    case row::effects:
        sfx_volume = volumes().effects * volume_step;
        break;
    case row::music:
        music_volume = volumes().music * volume_step;
        set_music_volume(music_volume);
        break;
    case row::theme:
        play_selected_theme();
        break;
    case row::keyboard:
        apply_keyboard_layout();
        break;
    default:
        break;
    }
}

void show_changed_row(BITMAP* target, const OptionRow& option, int direction) {
    show_row_panel(target, option, direction);
    if (option.group == 1)
        restore_buttons(target);
    if (option.row == row::depth && sound_on)
        sfx_allowed = 1;
    update_screen(target);
}

bool depth_is_fixed() {
    return settings.bitmap_depth == 0 && depth_class[0];
}

bool may_step(const OptionRow& option, bool forward) {
    switch (option.row) {
    case row::screen_mode:
        return screen_mode_range == 3;
    case row::depth:
        return !depth_is_fixed() && (!forward || screen_mode_range > 1);
    default:
        return needs_met(option.needs);
    }
}

void step_value(BITMAP* target, const OptionRow& option, bool forward) {
    option_row = option.row;
    if (!option.shown_when_pointed_at)
        show_explanation(target, option.row);
    if (option.row == row::theme)
        loop_setting() = 0;
    option.set(stepped_value(option.get(), offered_values(option), option.stepping, forward));
    if (option.row == row::theme)
        show_loop_controls();
    apply_value(option);
    show_changed_row(target, option, forward ? 1 : -1);
}

void step_forward(BITMAP* target, const OptionRow& option, const Slot& button) {
    if (!may_step(option, true))
        return;
    if (option.row == row::effects)
        show_pressed_look(target, button);
    show_loop_button_only_for_themes(option);
    step_value(target, option, true);
}

/// A theme is chosen among those that are there; any other value among the row's labels.
bool is_choice(const OptionRow& option, int value) {
    const int count = option.labels.empty() ? number_of_themes : static_cast<int>(option.labels.size());
    return value >= 0 && value < count;
}

void choose_value(BITMAP* target, const OptionRow& option, int value) {
    if (!needs_met(option.needs))
        return;
    show_loop_button_only_for_themes(option);
    if (option.row == row::screen_mode && screen_mode_range != 3)
        return;
    if (is_choice(option, value)) {
        if (option.row == row::theme) {
            loop_setting() = 0;
            show_loop_label(selected_module, value + 1);
        }
        option.set(value);
        if (option.row != row::music)
            apply_value(option);
        else if (music_volume = value * volume_step; theme_setting() < number_of_themes)
            set_music_volume(music_volume);
    }
    show_changed_row(target, option, 1);
    if (option.row == row::depth) {
        show_explanation(target, row::depth);
        update_screen(target);
    }
}

template <std::size_t N>
void take_field(char (&setting)[N], int field) {
    std::string text{text_of(option_slot(field).text)};
    trim_right(text);
    store_text(setting, text);
}

void toggle_loop(BITMAP* target) {
    if (!needs_met(Needs::music) || option_row != row::theme)
        return;
    loop_setting() = loop_setting() ? 0 : 1;
    if (!loop_setting()) {
        play_selected_theme();
    } else {
        if (theme_setting() != current_theme)
            play_selected_theme();
        theme_shown = current_theme;
    }
    show_loop_label(selected_module, theme_setting() + 1);
    show_changed_row(target, *find_row(row::theme), 1);
}

void reset_options(BITMAP* target) {
    if (needs_met(Needs::music))
        hide_loop_button();
    reset_settings();
    show_mouse(nullptr);
    setup_graphics_mode(probe_machine);
    show_mouse(screen);
    if (sound_on) {
        option_row = row::effects;
        show_row_panel(target, *find_row(row::effects));
        restore_buttons(target);
        sfx_volume = volumes().effects * volume_step;
        if (music_on && theme_setting() < number_of_themes)
            play_selected_theme();
    }
    draw_module_marker(target);
    update_screen(target);
}

bool redraws_after_press(const ActionRow& action) {
    return action.kind == ActionKind::step || action.kind == ActionKind::take_name ||
           action.kind == ActionKind::manual || action.kind == ActionKind::reset;
}

} // namespace

std::span<const ActionRow> action_rows() {
    return actions;
}

const ActionRow* find_action(int code) {
    const auto found = std::ranges::find(actions, code, &ActionRow::code);
    return found == std::end(actions) ? nullptr : found;
}

std::optional<int> carry_out_action(BITMAP* target, const SlotSet& running, int index) {
    const Slot& slot = slot_at(running, index);
    const ActionRow* action = find_action(slot.action);
    if (!action)
        return {};
    if (cc_screen == 1 && redraws_after_press(*action))
        draw_slot(target, running.slots, slot.activated);
    switch (action->kind) {
    case ActionKind::end_screen:
        return action->argument;
    case ActionKind::accept:
        take_field(settings.player_name, options_slot::player_name);
        take_field(settings.ip_address, options_slot::ip_address);
        save_settings();
        return 0;
    case ActionKind::step:
        step_forward(target, *row_of_step_code(action->code), slot);
        break;
    case ActionKind::choose:
        if (options_set.has_slot(index + 1)) // the last record has no value after it
            choose_value(target, *row_of_choose_code(action->code), option_slot(index + 1).action);
        break;
    case ActionKind::select_module:
        hide_loop_button();
        select_module(target, action->argument);
        refresh_module_rows(target);
        update_screen(target);
        break;
    case ActionKind::take_name:
        hide_loop_button();
        take_field(settings.player_name, options_slot::player_name);
        break;
    case ActionKind::take_address:
        hide_loop_button();
        take_field(settings.ip_address, options_slot::ip_address);
        break;
    case ActionKind::loop_theme:
        toggle_loop(target);
        break;
    case ActionKind::reset:
        reset_options(target);
        break;
    case ActionKind::manual:
        open_manual(target);
        break;
    }
    return {};
}

void step_back(BITMAP* target, const SlotSet& running, int index) {
    const Slot& button = slot_at(running, index);
    const OptionRow* option = row_of_step_code(button.action);
    if (!option)
        return;
    const bool tested_after_the_press = option->row == row::depth;
    if (!tested_after_the_press && !may_step(*option, false))
        return;
    show_pressed_look(target, button);
    if (needs_met(Needs::music))
        play_effect(button.sound_act);
    if (may_step(*option, false))
        step_value(target, *option, false);
}

} // namespace vcc
