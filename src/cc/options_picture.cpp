#include "cc/options_picture.h"

#include "cc/connectors.h"
#include "cc/option_looks.h"
#include "cc/sets.h"
#include "display/buffers.h"
#include "screen/draw_slot.h"
#include "screen/text_window.h"
#include "sound/sound.h"
#include "text/fonts.h"

namespace vcc {

namespace {

bool is_entry(int value) {
    return value >= 0 && value < value_entry_limit;
}

void draw_value_marker(BITMAP* target, const OptionRow& option, int value) {
    if (option.rules.loops)
        draw_option_slot(target, options_slot::loop_button);
    if (is_entry(value))
        draw_slot(target, options_set.toggles, value_record(value));
    if (option.rules.loops) {
        draw_option_slot(target, options_slot::loop_label);
        draw_slot(target, options_set.toggles, options_slot::loop_label);
    }
}

} // namespace

void draw_option_slot(BITMAP* target, int index) {
    draw_slot(target, options_set.slots, index);
}

void draw_highlighted(BITMAP* target, int index) {
    highlight(index);
    draw_option_slot(target, index);
}

void draw_press(BITMAP* target, const Slot& button, bool pressed) {
    if (button.activated != 0)
        draw_slot(target, pressed ? options_set.toggles : options_set.slots, button.activated);
}

void draw_module_marker(BITMAP* target, const OptionsState& state, bool lit) {
    const int marker = options_slot::first_marker + static_cast<int>(state.selected_module);
    draw_slot(target, lit ? options_set.toggles : options_set.slots, marker);
}

void restore_buttons(BITMAP* target, const OptionsState& state) {
    const EffectsHeld held;
    const auto draw_resting = [target](int index) {
        give_normal_look(index);
        draw_option_slot(target, index);
    };
    const OptionRow& current = state.shown_option();
    if (!current.of_sound())
        draw_resting(state.selector_button());
    for (const OptionRow& option : option_rows())
        if (option.of_sound())
            draw_resting(option.button);
    if (current.of_sound())
        draw_highlighted(target, current.button);
}

void draw_resting_values(BITMAP* target, const OptionsState& state) {
    for (int i = 0; i < value_entry_limit; ++i) {
        rest_value(state.shown_option(), i);
        draw_option_slot(target, value_button(i));
    }
}

void draw_marked_value(BITMAP* target, const OptionsState& state) {
    if (!is_entry(state.marked_value))
        return;
    light_value(state.marked_value);
    draw_option_slot(target, value_button(state.marked_value));
}

void draw_value_panel(BITMAP* target, const OptionsState& state, const OptionRow& option) {
    const EffectsHeld held;
    draw_connectors(target, state);
    for (int i = 0; i < value_entry_limit; ++i) {
        set_entry(option, i);
        draw_option_slot(target, value_button(i));
    }
    draw_value_marker(target, option, option.get(state.selected_module));
}

void draw_explanation(BITMAP* target) {
    const TextWindow& window = text_windows[info_window];
    const int x = column_x(window.font, window.left), y = row_y(window.font, window.top - 1);
    const int right = column_x(window.font, window.right) + window.shadow,
              bottom = row_y(window.font, window.bottom) + window.shadow;
    if (BITMAP* clean = graphic_buffer(info_copy_buffer); clean && right > x && bottom > y)
        blit(clean, target, x, y, x, y, right - x, bottom - y);
    draw_slots(target, info_set.slots);
}

} // namespace vcc
