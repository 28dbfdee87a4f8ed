#include "cc/options_screen.h"

#include "cc/options_records.h"
#include "core/log.h"
#include "core/text.h"
#include "display/graphics_mode.h"
#include "screen/draw_slot.h"
#include "settings/settings.h"
#include "sound/music.h"
#include "sound/sound.h"

#include <algorithm>

namespace vcc {

namespace {

void draw(BITMAP* target, int index) {
    draw_slot(target, options_set.slots, index);
}
void draw_toggle(BITMAP* target, int index) {
    draw_slot(target, options_set.toggles, index);
}

void highlight(int index) {
    option_slot(index).fore_colour = option_toggle(index).back_colour;
}
void highlight_value(int value) {
    option_slot(value_button(value)).fore_colour = option_toggle(value_record(value)).fore_colour;
}
bool is_entry(int value) {
    return value >= 0 && value < value_entry_limit;
}

int selector_button() {
    return options_slot::first_selector + selected_module;
}
bool is_sound_row(int row) {
    return row <= row::last_sound_row;
}

void draw_highlighted(BITMAP* target, int index) {
    highlight(index);
    draw(target, index);
}

/// Makes a slot and its toggle record visible or hidden, reachable or inert.
void set_reachable(int index, bool reachable) {
    option_slot(index).toggle = option_toggle(index).toggle = reachable ? index : -1;
    option_slot(index).draw_flags[0] = option_toggle(index).draw_flags[0] = reachable ? ' ' : 'n';
}

void grey_out(int index) {
    for (Slot* record : {&option_slot(index), &option_toggle(index)})
        record->fore_colour = record->back_colour = disabled_colour;
    option_slot(index).toggle = -1;
}

} // namespace

void draw_module_marker(BITMAP* target) {
    draw(target, options_slot::first_marker + selected_module);
}
void draw_lit_module_marker(BITMAP* target) {
    draw_toggle(target, options_slot::first_marker + selected_module);
}

bool play_theme(int theme) {
    if (!start_theme(theme, music_volume)) {
        disable_music_controls();
        return false;
    }
    current_theme = theme_shown = theme; // with all themes in turn, the next one is that behind it
    set_music_volume(music_volume);
    return true;
}

void select_module(BITMAP* target, int module) {
    if (module == selected_module)
        return;
    {
        const EffectsHeld held;
        hide_loop_button();
        if (!is_sound_row(option_row)) {
            option_row = sound_on ? row::effects : row::screen_mode;
            restore_buttons(target);
        }
        show_explanation(target, option_row);
        draw_connectors(target);
        draw(target, selector_button());
        draw(target, option_slot(selector_button()).activated);
        selected_module = module;
        const OptionRow* option = find_row(option_row);
        if (option && is_sound_row(option_row)) {
            if (needs_met(option->needs)) {
                draw_highlighted(target, option->button);
                if (option_row == row::theme)
                    show_loop_controls();
                show_module_row(target);
            }
        } else if (option && option_row == row::screen_mode) {
            show_value_panel(target, *option);
        }
    }
    if (!sound_on)
        return;
    const auto index = static_cast<std::size_t>(module);
    sfx_volume = settings.volumes[index].effects * volume_step;
    if (!music_on)
        return;
    music_volume = settings.volumes[index].music * volume_step;
    play_theme(settings.theme[index]);
}

void refresh_module_rows(BITMAP* target) {
    if (!sound_on)
        return;
    const EffectsHeld held;
    draw_toggle(target, option_slot(selector_button()).activated);
    if (!is_sound_row(option_row)) {
        info_row = -1;
        option_row = row::effects;
    }
    const OptionRow* option = find_row(option_row);
    if (!option || !needs_met(option->needs))
        return;
    const bool explained = info_row == option_row;
    if (!explained)
        show_explanation(target, option_row);
    info_row = option_row;
    if (explained && option_row == row::theme)
        return; // its panel follows the music by itself
    show_module_row(target);
    restore_buttons(target);
}

void show_module_row(BITMAP* target) {
    if (const OptionRow* option = find_row(option_row); option && is_sound_row(option_row))
        show_row_panel(target, *option);
}

void show_row_panel(BITMAP* target, const OptionRow& option, int direction) {
    mark_value(target, option.get());
    show_value_panel(target, option, direction);
}

void restore_buttons(BITMAP* target) {
    const EffectsHeld held;
    if (!is_sound_row(option_row)) {
        give_normal_look(selector_button());
        draw(target, selector_button());
    }
    for (const OptionRow& option : option_rows())
        if (is_sound_row(option.row)) {
            give_normal_look(option.button);
            draw(target, option.button);
        }
    if (const OptionRow* option = find_row(option_row); option && is_sound_row(option_row))
        draw_highlighted(target, option->button);
}

void mark_value(BITMAP* target, int value) {
    const EffectsHeld held;
    restore_buttons(target);
    for (int i = 0; i < value_entry_limit; ++i) {
        give_normal_look(value_button(i));
        draw(target, value_button(i));
    }
    if (is_entry(value)) {
        highlight_value(value);
        draw(target, value_button(value));
    }
    marked_value = value;
}

void show_loop_button() {
    set_reachable(options_slot::loop_button, true);
}
void hide_loop_button() {
    set_reachable(options_slot::loop_button, false);
}

void show_loop_button_only_for_themes(const OptionRow& option) {
    set_reachable(options_slot::loop_button, option.row == row::theme);
}

void show_loop_label(int module, int number) {
    const bool loop_all = theme_loop[static_cast<std::size_t>(module)] == 1;
    Slot& one = option_slot(options_slot::loop_label);
    Slot& all = option_toggle(options_slot::loop_label);
    Slot& button = option_slot(options_slot::loop_button);
    if (loop_all) {
        store_text(all.text, "Loop All Themes");
        hide(one);
        show(all);
        button.fore_colour = option_toggle(options_slot::loop_button).back_colour;
    } else {
        std::string text = format_text("Loop Theme %2.2d", number);
        pad_text(text, 15, ' ');
        store_text(one.text, text);
        show(one);
        hide(all);
        button.fore_colour = button.back_colour;
    }
}

void show_loop_controls() {
    show_loop_button();
    show_loop_label(selected_module, settings.theme[static_cast<std::size_t>(selected_module)] + 1);
}

void disable_sound_controls() {
    grey_out(find_row(row::effects)->button);
    for (int module = 0; module < module_count; ++module)
        option_slot(options_slot::first_selector + module).toggle = -1;
}

void disable_music_controls() {
    grey_out(find_row(row::music)->button);
    grey_out(find_row(row::theme)->button);
}

namespace {

/// Pointing at a row's button shows the row.
void point_at_row(BITMAP* target, const OptionRow& option) {
    if (!needs_met(option.needs))
        return;
    show_loop_button_only_for_themes(option);
    option_row = option.row;
    show_explanation(target, option.row);
    if (option.row == row::theme)
        show_loop_controls();
    show_row_panel(target, option);
    if (!is_sound_row(option.row)) {
        draw_module_marker(target);
        return;
    }
    draw_highlighted(target, selector_button());
    restore_buttons(target);
    draw_toggle(target, option_slot(selector_button()).activated);
}

void point_at_values(BITMAP* target) {
    if (is_entry(marked_value)) {
        highlight_value(marked_value);
        draw(target, value_button(marked_value));
    }
    if (option_row == row::theme)
        show_explanation(target, row::theme);
    if (is_sound_row(option_row))
        draw_lit_module_marker(target);
}

} // namespace

void options_pointer_over(BITMAP* target, int index) {
    const EffectsHeld held;
    if (index >= options_slot::first_selector && index <= options_slot::selector_end) {
        draw_highlighted(target, selector_button());
        refresh_module_rows(target);
    } else if (const OptionRow* option = row_of_button(index)) {
        if (option->shown_when_pointed_at)
            point_at_row(target, *option);
    } else if (std::ranges::find(options_slot::resting, index) != options_slot::resting.end()) {
        draw_module_marker(target);
    } else if (index >= value_button(0) && index < value_record(value_entry_limit - 1) && index % 2 == 0) {
        point_at_values(target);
    } else if (index == options_slot::loop_button && needs_met(Needs::music)) {
        show_explanation(target, row::loop_theme);
        draw_module_marker(target);
    }
}

} // namespace vcc
