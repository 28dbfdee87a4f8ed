#include "cc/options_screen.h"

#include "cc/connectors.h"
#include "cc/option_looks.h"
#include "cc/theme_player.h"
#include "core/clock.h"
#include "display/graphics_mode.h"
#include "interaction/focus.h"
#include "interaction/screen_run.h"
#include "screen/draw.h"
#include "settings/settings.h"
#include "sound/sound.h"

#include <algorithm>

namespace vcc {

namespace {

Row first_option_row() {
    if (sound_on)
        return Row::effects;
    return screen_mode_range == ModeRange::both ? Row::screen_mode : Row::depth;
}

void show_pressed_look(BITMAP* target, const Slot& button) {
    draw_press(target, button, true);
    update_screen(target);
    wait_ms(pressed_look_ms(button));
    draw_press(target, button, false);
    update_screen(target);
}

bool may_step(const OptionRow& option, bool forward) {
    return needs_met(option.rules.needs) && (!option.rules.may_step || option.rules.may_step(forward));
}

} // namespace

void OptionsScreen::open() {
    show_loop_button(false);
    selected_module = Module::hq;
    option_row = first_option_row();
    first_slot_ = 0;
}

bool OptionsScreen::play_theme() {
    const bool plays = play_theme_of(selected_module);
    if (!plays)
        disable_music_controls();
    return plays;
}

void OptionsScreen::mark_value(BITMAP* target, int value) {
    const EffectsHeld held;
    restore_buttons(target, *this);
    draw_resting_values(target, *this);
    marked_value = value;
    draw_marked_value(target, *this);
}

void OptionsScreen::draw_row(BITMAP* target, const OptionRow& option) {
    mark_value(target, option.get(selected_module));
    draw_value_panel(target, *this, option);
}

void OptionsScreen::explain(BITMAP* target, Row row) {
    const OptionRow* option = find_row(row);
    if (const std::optional<int> first = explanation_of(row)) {
        info_row = row;
        if (!option || needs_met(option->rules.needs))
            set_explanation(*first);
    }
    draw_explanation(target);
}

/// Shows a row that the player steps, chooses or points at.
void OptionsScreen::put_on_panel(BITMAP* target, const OptionRow& option, int direction) {
    if (option.rules.settle)
        option.rules.settle(direction);
    draw_row(target, option);
}

void OptionsScreen::show_changed_row(BITMAP* target, const OptionRow& option, int direction) {
    put_on_panel(target, option, direction);
    if (option.of_sound())
        restore_buttons(target, *this);
}

/// Sets a value of the selected module, and puts it into effect.
void OptionsScreen::set_value(const OptionRow& option, int value) {
    if (option.rules.loops)
        theme_loop[index_of(selected_module)] = 0;
    option.setting(selected_module) = value;
    if (option.rules.loops)
        show_loop_controls(selected_module);
    if (option.rules.apply)
        option.rules.apply(selected_module);
    if (!needs_met(Needs::music))
        disable_music_controls();
}

void OptionsScreen::step_value(BITMAP* target, const OptionRow& option, bool forward) {
    option_row = option.row;
    if (!option.rules.shown_when_pointed_at)
        explain(target, option.row);
    const int value = option.get(selected_module);
    set_value(option, stepped_value(value, offered_values(option), option.rules.stepping, forward));
    show_changed_row(target, option, forward ? 1 : -1);
}

void OptionsScreen::step(BITMAP* target, const OptionRow& option, const Slot& button) {
    if (!may_step(option, true))
        return;
    if (option.rules.presses_twice)
        show_pressed_look(target, button);
    show_loop_button(option.rules.loops);
    step_value(target, option, true);
}

void OptionsScreen::press_and_step(BITMAP* target, const OptionRow& option, const Slot& button, bool forward) {
    if (!option.rules.presses_in_vain && !may_step(option, forward))
        return;
    show_pressed_look(target, button);
    if (needs_met(Needs::music))
        play_effect(button.sound_act);
    if (!may_step(option, forward))
        return;
    if (forward)
        show_loop_button(option.rules.loops);
    step_value(target, option, forward);
}

void OptionsScreen::choose(BITMAP* target, const OptionRow& option, int value) {
    if (!needs_met(option.rules.needs))
        return;
    show_loop_button(option.rules.loops);
    if (option.rules.may_choose && !option.rules.may_choose())
        return;
    if (is_choice(option, value))
        set_value(option, value);
    show_changed_row(target, option, 1);
    if (option.rules.explained_when_chosen)
        explain(target, option.row);
}

void OptionsScreen::select_module(BITMAP* target, Module module) {
    if (module == selected_module)
        return;
    {
        const EffectsHeld held;
        show_loop_button(false);
        if (!shown_option().of_sound()) {
            option_row = first_option_row();
            restore_buttons(target, *this);
        }
        explain(target, option_row);
        draw_connectors(target, *this);
        draw_option_slot(target, selector_button());
        draw_press(target, option_slot(selector_button()), false);
        selected_module = module;
        const OptionRow& shown = shown_option();
        if (!shown.of_sound()) {
            put_on_panel(target, shown);
        } else if (needs_met(shown.rules.needs)) {
            draw_highlighted(target, shown.button);
            if (shown.rules.loops)
                show_loop_controls(selected_module);
            draw_row(target, shown);
        }
    }
    if (!sound_on)
        return;
    use_effects_volume(module);
    play_theme();
}

void OptionsScreen::select(BITMAP* target, Module module) {
    if (module != selected_module || option_row != Row::theme)
        show_loop_button(false);
    select_module(target, module);
    refresh_module_rows(target);
}

/// Shows the selected module's sound row again: after a module switch, or with the pointer on the selector.
void OptionsScreen::refresh_module_rows(BITMAP* target) {
    if (!sound_on)
        return;
    const EffectsHeld held;
    draw_press(target, option_slot(selector_button()), true);
    if (!shown_option().of_sound()) {
        info_row = Row::none;
        option_row = Row::effects;
    }
    const OptionRow& shown = shown_option();
    if (!needs_met(shown.rules.needs))
        return;
    const bool explained = info_row == option_row;
    if (!explained)
        explain(target, option_row);
    if (explained && shown.rules.loops)
        return; // its panel follows the music anyway
    draw_row(target, shown);
    restore_buttons(target, *this);
}

void OptionsScreen::toggle_loop(BITMAP* target) {
    if (!needs_met(Needs::music) || option_row != Row::theme)
        return;
    int& loop = theme_loop[index_of(selected_module)];
    loop = loop ? 0 : 1;
    play_theme();
    show_loop_label(selected_module);
    show_changed_row(target, *find_row(Row::theme), 1);
}

void OptionsScreen::refresh(BITMAP* target) {
    if (sound_on) {
        option_row = Row::effects;
        use_effects_volume(selected_module);
    }
    explain(target, option_row);
    put_on_panel(target, shown_option());
    restore_buttons(target, *this);
    if (needs_met(Needs::music) && settings.theme[index_of(selected_module)] < number_of_themes)
        play_theme();
    draw_module_marker(target, *this);
}

void OptionsScreen::take_loop_button_away(BITMAP* target) {
    show_loop_button(false);
    if (theme_display_live() && option_row == Row::theme)
        draw_row(target, shown_option());
}

void OptionsScreen::point_at_row(BITMAP* target, const OptionRow& option) {
    if (!needs_met(option.rules.needs))
        return;
    show_loop_button(option.rules.loops);
    option_row = option.row;
    explain(target, option.row);
    if (option.rules.loops)
        show_loop_controls(selected_module);
    put_on_panel(target, option);
    if (!option.of_sound()) {
        draw_module_marker(target, *this);
        return;
    }
    draw_highlighted(target, selector_button());
    restore_buttons(target, *this);
    draw_press(target, option_slot(selector_button()), true);
}

void OptionsScreen::point_at_values(BITMAP* target) {
    draw_marked_value(target, *this);
    if (shown_option().rules.loops)
        explain(target, option_row);
    if (shown_option().of_sound())
        draw_module_marker(target, *this, true);
}

/// Whether a slot is current only because the screen opened with it: the player has neither pointed nor moved to one.
bool OptionsScreen::opened_with(int slot) {
    if (first_slot_ == 0)
        first_slot_ = slot;
    if (first_slot_ != slot || slot_under_pointer(slot, options_set.slots, false) == slot)
        first_slot_ = -1;
    return first_slot_ == slot;
}

void OptionsScreen::point(BITMAP* target, int slot) {
    const EffectsHeld held;
    const bool untouched = opened_with(slot);
    if (slot >= options_slot::first_selector && slot <= options_slot::selector_end) {
        draw_highlighted(target, selector_button());
        refresh_module_rows(target);
    } else if (const OptionRow* option = find_row(&OptionRow::button, slot)) {
        if (option->rules.shown_when_pointed_at && (!untouched || option->row == option_row))
            point_at_row(target, *option);
    } else if (std::ranges::find(options_slot::resting, slot) != options_slot::resting.end()) {
        draw_module_marker(target, *this);
    } else if (slot >= value_button(0) && slot < value_record(value_entry_limit - 1) && slot % 2 == 0) {
        point_at_values(target);
    } else if (slot == options_slot::loop_button && needs_met(Needs::music)) {
        explain(target, Row::loop_theme);
        draw_module_marker(target, *this);
    }
}

} // namespace vcc
