// The value panel: up to eleven values of the current option row, and the explanation box beside it.
#include "cc/options_records.h"
#include "cc/options_screen.h"
#include "core/text.h"
#include "display/buffers.h"
#include "display/graphics_mode.h"
#include "screen/draw_slot.h"
#include "screen/text_window.h"
#include "settings/keyboard_layout.h"
#include "settings/settings.h"
#include "sound/sound.h"
#include "text/fonts.h"

namespace vcc {

namespace {

enum class Entry {
    choosable, ///< shown, and a click chooses its value
    shown,     ///< shown, and a click does nothing
    hidden
};

void set_pointer_sensitive(int i, bool sensitive) {
    option_slot(value_button(i)).toggle = sensitive ? value_button(i) : -1;
    option_slot(value_record(i)).toggle = sensitive ? value_record(i) : -1;
}

void set_visible(int index, bool visible) {
    option_slot(index).draw_flags[0] = option_toggle(index).draw_flags[0] = visible ? ' ' : 'n';
}

void prepare_entry(int i, Entry state, int choose_code) {
    const bool visible = state != Entry::hidden;
    set_visible(value_button(i), visible);
    set_pointer_sensitive(i, visible);
    if (!visible) {
        set_visible(value_record(i), false);
        return;
    }
    give_normal_look(value_button(i));
    give_normal_look(value_record(i));
    set_visible(value_record(i), true);
    option_slot(value_button(i)).action = state == Entry::choosable ? choose_code : 0;
}

/// Which entries the screen-mode row shows on this machine; false when the range says nothing about it.
bool screen_mode_entry(int i, Entry& state) {
    switch (screen_mode_range) {
    case 3:
        state = i < 2 ? Entry::choosable : Entry::hidden;
        return true;
    case 2:
        state = i == 0 ? Entry::shown : Entry::hidden;
        return true;
    case 1:
        state = i == 1 ? Entry::shown : Entry::hidden;
        return true;
    default:
        return false;
    }
}

void write_label(int i, std::string_view label) {
    for (int index : {value_button(i), value_record(i)}) {
        store_text(option_slot(index).text, label);
        store_text(option_toggle(index).text, label);
    }
}

/// Greys the depths that the display does not offer; the setting moves off them.
void apply_depth_availability(BITMAP* target, int direction) {
    for (int i = 0; i < 3; ++i) {
        if (depth_class[static_cast<std::size_t>(i)]) {
            set_pointer_sensitive(i, true);
            give_normal_look(value_button(i));
            give_normal_look(value_record(i));
            continue;
        }
        if (settings.bitmap_depth == i) {
            const int moved = neighbour_depth(i, direction, depth_class);
            if (moved != i) {
                settings.bitmap_depth = moved;
                mark_value(target, moved);
                draw_connectors(target);
            }
        }
        set_pointer_sensitive(i, false);
        option_slot(value_button(i)).fore_colour = option_slot(value_record(i)).fore_colour = disabled_colour;
    }
}

void draw_value_marker(BITMAP* target, const OptionRow& option) {
    const int value = option.get();
    const bool is_entry = value >= 0 && value < value_entry_limit;
    if (option.row == row::theme)
        draw_slot(target, options_set.slots, options_slot::loop_button);
    if (is_entry)
        draw_slot(target, options_set.toggles, value_record(value));
    if (option.row == row::theme) {
        draw_slot(target, options_set.slots, options_slot::loop_label);
        draw_slot(target, options_set.toggles, options_slot::loop_label);
    }
}

} // namespace

int neighbour_depth(int depth, int direction, const std::array<int, 3>& offered) {
    const auto is_offered = [&](int i) { return i >= 0 && i < 3 && offered[static_cast<std::size_t>(i)]; };
    const int last = 2;
    const int neighbour = direction > 0 ? (depth < last ? depth + 1 : depth - 1) : (depth == 0 ? depth + 1 : depth - 1);
    return is_offered(neighbour) ? neighbour : depth;
}

void show_value_panel(BITMAP* target, const OptionRow& option, int direction) {
    const EffectsHeld held;
    const int shown = offered_values(option);
    const bool by_mode = option.row == row::screen_mode;
    if (by_mode)
        mark_value(target, option.get());
    draw_connectors(target);
    for (int i = 0; i < value_entry_limit; ++i) {
        Entry state = i < shown ? Entry::choosable : Entry::hidden;
        if (!by_mode || screen_mode_entry(i, state))
            prepare_entry(i, state, option.choose_code);
    }
    if (option.row == row::depth)
        apply_depth_availability(target, direction);
    for (int i = 0; i < shown; ++i) {
        write_label(i, value_label(option, i));
        draw_slot(target, options_set.slots, value_button(i));
    }
    for (int i = shown; i < value_entry_limit; ++i) {
        write_label(i, {});
        set_visible(value_button(i), false);
        set_visible(value_record(i), false);
    }
    draw_value_marker(target, option);
    if (option.row == row::keyboard)
        write_keyboard_layout();
}

void show_explanation(BITMAP* target, int number) {
    const TextWindow& window = text_windows[info_window];
    {
        const FontSelection font(window.font);
        const int x = column_x(window.font, window.left), y = row_y(window.font, window.top - 1);
        const int right = column_x(window.font, window.right) + window.shadow,
                  bottom = row_y(window.font, window.bottom) + window.shadow;
        if (BITMAP* clean = graphic_buffer(info_copy_buffer); clean && right > x && bottom > y)
            blit(clean, target, x, y, x, y, right - x, bottom - y);
    }
    const OptionRow* option = find_row(number);
    if (has_explanation(number)) {
        info_row = number;
        if (!option || needs_met(option->needs)) {
            const auto lines = explanation_of(number);
            for (std::size_t j = 0; j < lines.size() && j + 1 < info_set.slots.size(); ++j)
                store_text(info_set.slots[j + 1].text, lines[j]);
        }
    }
    draw_slots(target, info_set.slots);
}

} // namespace vcc
