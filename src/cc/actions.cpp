#include "cc/actions.h"

#include "cc/load.h"
#include "cc/manual.h"
#include "cc/option_table.h"
#include "cc/options_view.h"
#include "cc/selection.h"
#include "cc/sets.h"
#include "cc/theme_player.h"
#include "core/clock.h"
#include "core/text.h"
#include "display/buffers.h"
#include "display/graphics_mode.h"
#include "display/mode_rules.h"
#include "interaction/screen_run.h"
#include "screen/draw.h"
#include "screen/draw_slot.h"
#include "settings/keyboard_layout.h"
#include "sound/music.h"
#include "sound/sound.h"

#include <algorithm>

namespace vcc {

namespace {

using Result = std::optional<ScreenResult>;

/// Shows the pressed look, then the resting look again.
void show_pressed_look(BITMAP* target, const Slot& button) {
    draw_pressed_look(target, button);
    update_screen(target);
    wait_ms(pressed_look_ms(button));
    draw_released_look(target, button);
    update_screen(target);
}

/// Puts a row's new value into effect.
void apply_value(const OptionRow& option) {
    switch (option.row) {
    case Row::effects:
        sfx_volume = selected_volumes().effects * volume_step;
        break;
    case Row::music:
        music_volume = selected_volumes().music * volume_step;
        set_music_volume(music_volume);
        break;
    case Row::theme:
        play_selected_theme();
        break;
    case Row::keyboard:
        apply_keyboard_layout();
        break;
    default:
        break;
    }
}

void show_changed_row(BITMAP* target, const OptionRow& option, int direction) {
    show_option(target, option, direction);
    if (option.group == Group::sound)
        restore_buttons(target);
}

bool may_step(const OptionRow& option, bool forward) {
    switch (option.row) {
    case Row::screen_mode:
        return screen_mode_range == ModeRange::both;
    case Row::depth:
        if (settings.bitmap_depth == 0 && depth_class[0])
            return false;
        return !forward || screen_mode_range > ModeRange::full_screen_only;
    default:
        return needs_met(option.needs);
    }
}

void step_value(BITMAP* target, const OptionRow& option, bool forward) {
    option_row = option.row;
    if (!option.shown_when_pointed_at)
        show_explanation(target, option.row);
    if (option.row == Row::theme)
        selected_loop() = 0;
    option.set(stepped_value(option.get(), offered_values(option), option.stepping, forward));
    if (option.row == Row::theme)
        show_loop_controls();
    apply_value(option);
    show_changed_row(target, option, forward ? 1 : -1);
}

void step_forward(BITMAP* target, const OptionRow& option, const Slot& button) {
    if (!may_step(option, true))
        return;
    if (option.row == Row::effects)
        show_pressed_look(target, button);
    show_loop_button_only_for_themes(option);
    step_value(target, option, true);
}

/// Any theme that exists can be chosen, and any other value that has a label.
bool is_choice(const OptionRow& option, int value) {
    return value >= 0 && value < (option.labels.empty() ? number_of_themes : option.labels.count);
}

void choose_value(BITMAP* target, const OptionRow& option, int value) {
    if (!needs_met(option.needs))
        return;
    show_loop_button_only_for_themes(option);
    if (option.row == Row::screen_mode && screen_mode_range != ModeRange::both)
        return;
    if (is_choice(option, value)) {
        if (option.row == Row::theme) {
            selected_loop() = 0;
            show_loop_label(selected_module, value + 1);
        }
        option.set(value);
        if (option.row != Row::music)
            apply_value(option);
        else if (music_volume = value * volume_step; selected_theme() < number_of_themes)
            set_music_volume(music_volume);
    }
    show_changed_row(target, option, 1);
    if (option.row == Row::depth)
        show_explanation(target, Row::depth);
}

template <std::size_t N>
void take_field(char (&setting)[N], int field) {
    std::string text{text_of(option_slot(field).text)};
    trim_right(text);
    store_text(setting, text);
}

// What the codes do that belong to no option. `target` may be another picture afterwards.

template <ScreenResult Which>
Result end_with(BITMAP*&) {
    return Which;
}

Result accept(BITMAP*&) {
    take_field(settings.player_name, options_slot::player_name);
    take_field(settings.ip_address, options_slot::ip_address);
    save_settings();
    return ScreenResult::menu;
}

Result take_name(BITMAP*&) {
    hide_loop_button();
    take_field(settings.player_name, options_slot::player_name);
    return {};
}

Result take_address(BITMAP*&) {
    hide_loop_button();
    take_field(settings.ip_address, options_slot::ip_address);
    return {};
}

Result show_manual(BITMAP*& target) {
    if (needs_met(Needs::music)) {
        hide_loop_button();
        if (cc_screen == CcScreen::options && option_row == Row::theme)
            show_row_panel(target, *find_row(Row::theme)); // the button is drawn away
    }
    open_manual();
    draw_module_marker(target);
    return {};
}

template <Module Which>
Result select(BITMAP*& target) {
    if (selected_module != Which || option_row != Row::theme)
        hide_loop_button();
    select_module(target, Which);
    refresh_module_rows(target);
    return {};
}

Result toggle_loop(BITMAP*& target) {
    if (!needs_met(Needs::music) || option_row != Row::theme)
        return {};
    selected_loop() = selected_loop() ? 0 : 1;
    play_selected_theme();
    show_loop_label(selected_module, selected_theme() + 1);
    show_changed_row(target, *find_row(Row::theme), 1);
    return {};
}

/// Probes the machine again and loads the pictures again if the colour depth changes; false if that fails.
bool probe_display(BITMAP*& target) {
    const EffectsHeld held;
    show_mouse(nullptr);
    setup_graphics_mode(probe_machine);
    if (const int bits = get_color_depth(); bits != bitmap_color_depth(target)) {
        depth_at_menu = depth_setting(bits).value_or(depth_at_menu);
        release_graphic_buffers();
        if (!reload_pictures(target))
            return false;
    }
    show_mouse(screen);
    return true;
}

Result reset(BITMAP*& target) {
    if (needs_met(Needs::music))
        hide_loop_button();
    reset_settings();
    if (!probe_display(target))
        return ScreenResult::leave;
    if (sound_on) {
        option_row = Row::effects;
        sfx_volume = selected_volumes().effects * volume_step;
    }
    show_explanation(target, option_row);
    if (const OptionRow* option = find_row(option_row))
        show_option(target, *option);
    restore_buttons(target);
    if (needs_met(Needs::music) && selected_theme() < number_of_themes)
        play_selected_theme();
    draw_module_marker(target);
    return {};
}

struct ActionRow {
    int code;
    std::string_view name;
    Result (*act)(BITMAP*& target);
    bool releases = false; ///< the options screen first shows the button's resting look
};

constexpr ActionRow actions[] = {
    {1, "leave", end_with<ScreenResult::leave>},
    {2, "hq", end_with<ScreenResult::hq>},
    {3, "factory", end_with<ScreenResult::factory>},
    {4, "battle", end_with<ScreenResult::battle>},
    {5, "options", end_with<ScreenResult::options>},
    {6, "accept", accept},
    {17, "take_player_name", take_name, true},
    {18, "manual", show_manual, true},
    {30, "cancel", end_with<ScreenResult::menu>},
    {31, "select_hq", select<Module::hq>},
    {32, "select_factory", select<Module::factory>},
    {33, "select_battle", select<Module::battle>},
    {34, "select_cc", select<Module::control_centre>},
    {38, "theme_loop", toggle_loop},
    {50, "reset", reset, true},
    {51, "take_address", take_address},
    {998, "back", end_with<ScreenResult::menu>},
};

constexpr std::string_view step_prefix = "step_", choose_prefix = "choose_";

/// Whether every code and every name is unique in both tables together.
constexpr bool tables_agree() {
    const auto codes_are = [](int code) {
        return std::ranges::count(actions, code, &ActionRow::code) +
               std::ranges::count(option_table, code, &OptionRow::step_code) +
               std::ranges::count(option_table, code, &OptionRow::choose_code);
    };
    return std::ranges::all_of(actions,
                               [&](const ActionRow& row) {
                                   return codes_are(row.code) == 1 && !row.name.starts_with(step_prefix) &&
                                          !row.name.starts_with(choose_prefix) &&
                                          std::ranges::count(actions, row.name, &ActionRow::name) == 1;
                               }) &&
           std::ranges::all_of(option_table, [&](const OptionRow& row) {
               return codes_are(row.step_code) == 1 && codes_are(row.choose_code) == 1 &&
                      std::ranges::count(option_table, row.row, &OptionRow::row) == 1 &&
                      std::ranges::count(option_table, row.button, &OptionRow::button) == 1 &&
                      std::ranges::count(option_table, row.name, &OptionRow::name) == 1;
           });
}
static_assert(tables_agree(), "a code, button or name of an action or option is taken twice");

} // namespace

std::vector<ActionName> action_names() {
    std::vector<ActionName> names;
    for (const ActionRow& action : actions)
        names.push_back({action.code, std::string(action.name)});
    for (const OptionRow& option : option_table) {
        names.push_back({option.step_code, std::string(step_prefix).append(option.name)});
        names.push_back({option.choose_code, std::string(choose_prefix).append(option.name)});
    }
    std::ranges::sort(names, {}, &ActionName::code);
    return names;
}

std::optional<ScreenResult> carry_out_action(BITMAP*& target, const SlotSet& running, int index) {
    const Slot& slot = running.slots[static_cast<std::size_t>(index)];
    const auto action = std::ranges::find(actions, slot.action, &ActionRow::code);
    const OptionRow* stepped = row_of_step_code(slot.action);
    const bool releases = stepped || (action != std::end(actions) && action->releases);
    if (cc_screen == CcScreen::options && releases && slot.activated != 0)
        draw_slot(target, running.slots, slot.activated);
    Result result;
    if (action != std::end(actions))
        result = action->act(target);
    else if (stepped)
        step_forward(target, *stepped, slot);
    else if (const OptionRow* chosen = row_of_choose_code(slot.action);
             chosen && options_set.has_slot(index + 1)) // the last record has no value after it
        choose_value(target, *chosen, option_slot(index + 1).action);
    if (!result)
        update_screen(target);
    return result;
}

void step_back(BITMAP* target, const SlotSet& running, int index) {
    const Slot& button = running.slots[static_cast<std::size_t>(index)];
    const OptionRow* option = row_of_step_code(button.action);
    if (!option)
        return;
    const bool tested_after_the_press = option->row == Row::depth;
    if (!tested_after_the_press && !may_step(*option, false))
        return;
    show_pressed_look(target, button);
    if (needs_met(Needs::music))
        play_effect(button.sound_act);
    if (may_step(*option, false))
        step_value(target, *option, false);
    update_screen(target);
}

} // namespace vcc
