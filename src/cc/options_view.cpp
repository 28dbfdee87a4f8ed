#include "cc/options_view.h"

#include "cc/connectors.h"
#include "cc/sets.h"
#include "core/log.h"
#include "core/text.h"
#include "display/buffers.h"
#include "display/graphics_mode.h"
#include "screen/draw_slot.h"
#include "screen/text_window.h"
#include "settings/settings.h"
#include "sound/sound.h"
#include "text/fonts.h"
#include "text/screen_texts.h"

namespace vcc {

namespace {

constexpr std::size_t label_length = 30;

bool is_entry(int value) {
    return value >= 0 && value < value_entry_limit;
}

void set_visible(int index, bool visible) {
    option_slot(index).draw_flags[0] = option_toggle(index).draw_flags[0] = visible ? ' ' : 'n';
}
/// Makes a slot and its toggle record visible and selectable, or hidden and inert.
void set_reachable(int index, bool reachable) {
    set_visible(index, reachable);
    option_slot(index).toggle = option_toggle(index).toggle = reachable ? index : -1;
}

void grey_out(int index) {
    for (Slot* record : {&option_slot(index), &option_toggle(index)})
        record->fore_colour = record->back_colour = disabled_colour;
    option_slot(index).toggle = -1;
}

/// Draws a slot's highlighted look.
void draw_option_toggle(BITMAP* target, int index) {
    draw_slot(target, options_set.toggles, index);
}

} // namespace

void draw_option_slot(BITMAP* target, int index) {
    draw_slot(target, options_set.slots, index);
}
int selector_button() {
    return options_slot::first_selector + static_cast<int>(selected_module);
}

void draw_highlighted(BITMAP* target, int index) {
    option_slot(index).fore_colour = option_toggle(index).back_colour;
    draw_option_slot(target, index);
}

void draw_pressed_look(BITMAP* target, const Slot& button) {
    if (button.activated != 0)
        draw_option_toggle(target, button.activated);
}
void draw_released_look(BITMAP* target, const Slot& button) {
    if (button.activated != 0)
        draw_option_slot(target, button.activated);
}

void draw_module_marker(BITMAP* target) {
    draw_option_slot(target, options_slot::first_marker + static_cast<int>(selected_module));
}
void draw_lit_module_marker(BITMAP* target) {
    draw_option_toggle(target, options_slot::first_marker + static_cast<int>(selected_module));
}

void restore_buttons(BITMAP* target) {
    const EffectsHeld held;
    if (!is_sound_row(option_row)) {
        give_normal_look(selector_button());
        draw_option_slot(target, selector_button());
    }
    for (const OptionRow& option : option_rows())
        if (is_sound_row(option.row)) {
            give_normal_look(option.button);
            draw_option_slot(target, option.button);
        }
    if (const OptionRow* option = find_row(option_row); option && is_sound_row(option_row))
        draw_highlighted(target, option->button);
}

void show_loop_button() {
    set_reachable(options_slot::loop_button, true);
}
void hide_loop_button() {
    set_reachable(options_slot::loop_button, false);
}
void show_loop_button_only_for_themes(const OptionRow& option) {
    set_reachable(options_slot::loop_button, option.row == Row::theme);
}

void show_loop_label(Module module, int number) {
    const bool loop_all = theme_loop[index_of(module)] == 1;
    Slot& one = option_slot(options_slot::loop_label);
    Slot& all = option_toggle(options_slot::loop_label);
    Slot& button = option_slot(options_slot::loop_button);
    if (loop_all) {
        store_text(all.text, screen_text(screen_text_number::loop_all));
        hide(one);
        show(all);
        button.fore_colour = option_toggle(options_slot::loop_button).back_colour;
    } else {
        std::string text = numbered_screen_text(screen_text_number::loop_one, number);
        pad_text(text, 15, ' ');
        store_text(one.text, text);
        show(one);
        hide(all);
        button.fore_colour = button.back_colour;
    }
}

void show_loop_controls() {
    show_loop_button();
    show_loop_label(selected_module, selected_theme() + 1);
}

void disable_sound_controls() {
    grey_out(find_row(Row::effects)->button);
    for (int module = 0; module < module_count; ++module)
        option_slot(options_slot::first_selector + module).toggle = -1;
}

void disable_music_controls() {
    grey_out(find_row(Row::music)->button);
    grey_out(find_row(Row::theme)->button);
}

namespace {

// The value panel: up to eleven values of a row.

enum class Entry {
    choosable, ///< a click chooses its value
    shown,     ///< a click does nothing
    grey,      ///< shown, but greyed out
    hidden,
    as_it_was
};

/// A depth that the display does not offer.
bool is_lacking(const OptionRow& option, int value) {
    const auto depth = static_cast<std::size_t>(value);
    return option.row == Row::depth && depth < depth_class.size() && !depth_class[depth];
}

/// Gives an entry its normal look, or grey.
void rest_value(const OptionRow* option, int value) {
    const int index = value_button(value);
    give_normal_look(index);
    if (option && is_lacking(*option, value))
        option_slot(index).fore_colour = disabled_colour;
}

/// By the modes that this machine offers; `as_it_was` if they are unknown.
Entry screen_mode_entry(int value) {
    switch (screen_mode_range) {
    case ModeRange::both:
        return value < 2 ? Entry::choosable : Entry::hidden;
    case ModeRange::window_only:
        return value == 0 ? Entry::shown : Entry::hidden;
    case ModeRange::full_screen_only:
        return value == 1 ? Entry::shown : Entry::hidden;
    default:
        return Entry::as_it_was;
    }
}

Entry entry_of(const OptionRow& option, int value, int offered) {
    if (option.row == Row::screen_mode)
        return screen_mode_entry(value);
    if (value >= offered)
        return Entry::hidden;
    return is_lacking(option, value) ? Entry::grey : Entry::choosable;
}

void prepare_entry(int value, Entry state, int choose_code) {
    if (state == Entry::as_it_was)
        return;
    for (int index : {value_button(value), value_record(value)}) {
        set_visible(index, state != Entry::hidden);
        option_slot(index).toggle = state == Entry::choosable || state == Entry::shown ? index : -1;
        if (state != Entry::hidden)
            give_normal_look(index);
        if (state == Entry::grey)
            option_slot(index).fore_colour = disabled_colour;
    }
    if (state != Entry::hidden)
        option_slot(value_button(value)).action = state == Entry::shown ? 0 : choose_code;
}

void write_label(int value, std::string_view label) {
    label = label.substr(0, label_length); // more would reach beyond the value window, where nothing wipes it away
    for (int index : {value_button(value), value_record(value)}) {
        store_text(option_slot(index).text, label);
        store_text(option_toggle(index).text, label);
    }
}

void draw_value_marker(BITMAP* target, const OptionRow& option) {
    const int value = option.get();
    if (option.row == Row::theme)
        draw_option_slot(target, options_slot::loop_button);
    if (is_entry(value))
        draw_option_toggle(target, value_record(value));
    if (option.row == Row::theme) {
        draw_option_slot(target, options_slot::loop_label);
        draw_option_toggle(target, options_slot::loop_label);
    }
}

/// Marks an entry of the value panel.
void mark_value(BITMAP* target, int value) {
    const EffectsHeld held;
    restore_buttons(target);
    for (int i = 0; i < value_entry_limit; ++i) {
        rest_value(find_row(option_row), i);
        draw_option_slot(target, value_button(i));
    }
    marked_value = value;
    draw_marked_value(target);
}

} // namespace

void draw_marked_value(BITMAP* target) {
    if (!is_entry(marked_value))
        return;
    option_slot(value_button(marked_value)).fore_colour = option_toggle(value_record(marked_value)).fore_colour;
    draw_option_slot(target, value_button(marked_value));
}

void show_value_panel(BITMAP* target, const OptionRow& option) {
    const EffectsHeld held;
    const int offered = offered_values(option);
    if (option.row == Row::screen_mode)
        mark_value(target, option.get());
    draw_connectors(target);
    for (int i = 0; i < value_entry_limit; ++i)
        prepare_entry(i, entry_of(option, i, offered), option.choose_code);
    for (int i = 0; i < offered; ++i) {
        write_label(i, value_label(option, i));
        draw_option_slot(target, value_button(i));
    }
    for (int i = offered; i < value_entry_limit; ++i) {
        write_label(i, {});
        set_visible(value_button(i), false);
        set_visible(value_record(i), false);
    }
    draw_value_marker(target, option);
}

void show_row_panel(BITMAP* target, const OptionRow& option) {
    mark_value(target, option.get());
    show_value_panel(target, option);
}

void show_module_row(BITMAP* target) {
    if (const OptionRow* option = find_row(option_row); option && is_sound_row(option_row))
        show_row_panel(target, *option);
}

void show_explanation(BITMAP* target, Row row) {
    const TextWindow& window = text_windows[info_window];
    {
        const FontSelection font(window.font);
        const int x = column_x(window.font, window.left), y = row_y(window.font, window.top - 1);
        const int right = column_x(window.font, window.right) + window.shadow,
                  bottom = row_y(window.font, window.bottom) + window.shadow;
        if (BITMAP* clean = graphic_buffer(info_copy_buffer); clean && right > x && bottom > y)
            blit(clean, target, x, y, x, y, right - x, bottom - y);
    }
    const OptionRow* option = find_row(row);
    if (const std::optional<int> first = explanation_of(row)) {
        info_row = row;
        if (!option || needs_met(option->needs))
            for (int line = 0; line < explanation_lines && info_set.has_slot(line + 1); ++line)
                store_text(info_set.slots[static_cast<std::size_t>(line) + 1].text, screen_text(*first + line));
    }
    draw_slots(target, info_set.slots);
}

} // namespace vcc
