#include "cc/selection.h"

#include "cc/connectors.h"
#include "cc/options_view.h"
#include "cc/sets.h"
#include "cc/theme_player.h"
#include "display/graphics_mode.h"
#include "interaction/focus.h"
#include "settings/keyboard_layout.h"
#include "settings/settings.h"
#include "sound/sound.h"

#include <algorithm>

namespace vcc {

Row first_option_row() {
    if (sound_on)
        return Row::effects;
    return screen_mode_range == ModeRange::both ? Row::screen_mode : Row::depth;
}

void show_option(BITMAP* target, const OptionRow& option, int direction) {
    if (option.row == Row::depth)
        settings.bitmap_depth = settled_depth(settings.bitmap_depth, direction, depth_class);
    if (option.row == Row::keyboard)
        write_keyboard_layout();
    show_row_panel(target, option);
}

void select_module(BITMAP* target, Module module) {
    if (module == selected_module)
        return;
    {
        const EffectsHeld held;
        hide_loop_button();
        if (!is_sound_row(option_row)) {
            option_row = first_option_row();
            restore_buttons(target);
        }
        show_explanation(target, option_row);
        draw_connectors(target);
        draw_option_slot(target, selector_button());
        draw_released_look(target, option_slot(selector_button()));
        selected_module = module;
        const OptionRow& option = *find_row(option_row);
        if (!is_sound_row(option_row)) {
            show_option(target, option);
        } else if (needs_met(option.needs)) {
            draw_highlighted(target, option.button);
            if (option_row == Row::theme)
                show_loop_controls();
            show_module_row(target);
        }
    }
    if (!sound_on)
        return;
    sfx_volume = selected_volumes().effects * volume_step;
    play_selected_theme();
}

void refresh_module_rows(BITMAP* target) {
    if (!sound_on)
        return;
    const EffectsHeld held;
    draw_pressed_look(target, option_slot(selector_button()));
    if (!is_sound_row(option_row)) {
        info_row = Row::none;
        option_row = Row::effects;
    }
    const OptionRow* option = find_row(option_row);
    if (!option || !needs_met(option->needs))
        return;
    const bool explained = info_row == option_row;
    if (!explained)
        show_explanation(target, option_row);
    info_row = option_row;
    if (explained && option_row == Row::theme)
        return; // its panel follows the music by itself
    show_module_row(target);
    restore_buttons(target);
}

namespace {

/// Pointing at a row's button shows the row.
void point_at_row(BITMAP* target, const OptionRow& option) {
    if (!needs_met(option.needs))
        return;
    show_loop_button_only_for_themes(option);
    option_row = option.row;
    show_explanation(target, option.row);
    if (option.row == Row::theme)
        show_loop_controls();
    show_option(target, option);
    if (!is_sound_row(option.row)) {
        draw_module_marker(target);
        return;
    }
    draw_highlighted(target, selector_button());
    restore_buttons(target);
    draw_pressed_look(target, option_slot(selector_button()));
}

void point_at_values(BITMAP* target) {
    draw_marked_value(target);
    if (option_row == Row::theme)
        show_explanation(target, Row::theme);
    if (is_sound_row(option_row))
        draw_lit_module_marker(target);
}

/// Whether a slot is current only because the screen opened with it: the player has neither pointed nor moved to one.
bool opened_with(int index) {
    if (first_slot == 0)
        first_slot = index;
    if (first_slot != index || slot_under_pointer(index, options_set.slots, false) == index)
        first_slot = -1;
    return first_slot == index;
}

} // namespace

void point_at_option(BITMAP* target, int index) {
    const EffectsHeld held;
    const bool untouched = opened_with(index);
    if (index >= options_slot::first_selector && index <= options_slot::selector_end) {
        draw_highlighted(target, selector_button());
        refresh_module_rows(target);
    } else if (const OptionRow* option = row_of_button(index)) {
        if (option->shown_when_pointed_at && (!untouched || option->row == option_row))
            point_at_row(target, *option);
    } else if (std::ranges::find(options_slot::resting, index) != options_slot::resting.end()) {
        draw_module_marker(target);
    } else if (index >= value_button(0) && index < value_record(value_entry_limit - 1) && index % 2 == 0) {
        point_at_values(target);
    } else if (index == options_slot::loop_button && needs_met(Needs::music)) {
        show_explanation(target, Row::loop_theme);
        draw_module_marker(target);
    }
}

} // namespace vcc
