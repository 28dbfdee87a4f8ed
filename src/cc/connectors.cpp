#include "cc/connectors.h"

#include "cc/option_looks.h"
#include "cc/sets.h"
#include "core/geometry.h"
#include "screen/draw.h"
#include "screen/text_window.h"
#include "sound/sound.h"
#include "text/fonts.h"

#include <vector>

namespace vcc {

namespace {

constexpr int band_thickness = 3;
constexpr int spur = 20;       ///< length of the line that leaves a button
constexpr int sound_stub = 11; ///< the same on the left of the sound group

int button_y(int index) {
    const Slot& slot = option_slot(index);
    return row_y(slot.font, slot.row) + cell_height(slot.font) / 2;
}

/// Heights of buttons, from top to bottom.
std::vector<int> heights(int first, int step, std::size_t count) {
    std::vector<int> all(count);
    for (int& y : all) {
        y = button_y(first);
        first += step;
    }
    return all;
}
std::vector<int> heights(Group group) {
    std::vector<int> all;
    for (const OptionRow& option : option_rows())
        if (option.group == group)
            all.push_back(button_y(option.button));
    return all;
}

int edge_x(const TextWindow& window, int column) {
    return column_x(window.font, column);
}

Point junction(int number) {
    const Slot& slot = option_slot(options_slot::first_junction + number);
    return {as_coordinate(slot.dest_x), as_coordinate(slot.dest_y + (std::int64_t{slot.box_height} - slot.src_y) / 2)};
}

/// The bands of the lines. Those on the path from the module to the value are lit.
struct Bands {
    BITMAP* target;
    const OptionsState& state;

    Group group = state.shown_option().group;
    int row_y = button_y(state.shown_option().button);
    int resting_colour = option_slot(options_slot::connector_colours).back_colour;
    int lit_colour = option_toggle(options_slot::connector_colours).fore_colour;
    Point sound_in = junction(0), value_in = junction(1), display_out = junction(2), battle_out = junction(3);
    int module_right = edge_x(text_windows[module_window], text_windows[module_window].right - 1);
    int sound_left = edge_x(text_windows[sound_group_window], text_windows[sound_group_window].left);
    int sound_right = edge_x(text_windows[sound_group_window], text_windows[sound_group_window].right);
    int group_right = edge_x(text_windows[group_window], text_windows[group_window].right);
    int value_left = edge_x(text_windows[value_window], text_windows[value_window].left);

    /// In this order, as later ones cover earlier ones.
    void draw() const {
        module_column();
        sound_group_left();
        sound_group_right();
        value_column();
        display_group();
        battle_group();
        across(value_in.x - 1, value_left - 19, value_in.y, true);
    }

    void across(int from, int to, int y, bool lit = false) const {
        draw_hband(target, from, y, to, lit ? lit_colour : resting_colour, band_thickness, 0, 0);
    }
    void down(int x, int from, int to, bool lit = false) const {
        draw_vband(target, x, from, to, lit ? lit_colour : resting_colour, band_thickness, 0, 0);
    }
    /// The resting lines of a column of buttons: one along them, and one to each.
    void column(const std::vector<int>& buttons, int x, int from, int to) const {
        down(x, buttons.front(), buttons.back());
        for (int y : buttons)
            across(from, to, y);
    }

    void module_column() const {
        const bool lit = group == Group::sound;
        const int left = module_right + 1, right = left + spur;
        column(heights(options_slot::first_selector, 1, module_count), right, left, right);
        const int y = button_y(state.selector_button());
        across(left, right, y, lit);
        down(right, y, sound_in.y, lit);
    }

    void sound_group_left() const {
        const bool lit = group == Group::sound;
        const int x = sound_left - sound_stub, end = sound_left + 9;
        column(heights(Group::sound), x, x, end);
        if (lit) {
            down(x, sound_in.y, row_y, true);
            across(x, end, row_y, true);
        }
        across(module_right + 1 + spur, sound_left - 10, sound_in.y, lit);
    }

    void sound_group_right() const {
        const bool lit = group == Group::sound;
        const std::vector<int> buttons = heights(Group::sound);
        const int x = sound_right + spur, middle = buttons[1];
        column(buttons, x, sound_right, x);
        if (lit) {
            down(x, middle, row_y, true);
            across(sound_right, x, row_y, true);
        }
        across(x, value_in.x, middle, lit);
        down(value_in.x, middle, value_in.y, lit);
    }

    void value_column() const {
        const int x = value_left - spur;
        column(heights(options_slot::first_value, 2, value_entry_limit), x, x, value_left);
        if (state.marked_value < 0 || state.marked_value >= value_entry_limit)
            return;
        const int y = button_y(value_button(state.marked_value));
        across(x, value_left, y, true);
        down(x, value_in.y, y, true);
    }

    void display_group() const {
        const bool lit = group == Group::display;
        const std::vector<int> buttons = heights(Group::display);
        const int x = group_right + spur, height = display_out.y;
        down(x, buttons.front(), buttons.back());
        for (const OptionRow& option : option_rows())
            if (option.group == Group::display && !is_hidden(option_slot(option.button)))
                across(group_right, x, button_y(option.button));
        if (lit) {
            across(group_right, x, row_y, true);
            down(x, row_y, height, true);
            down(value_in.x, height - 1, value_in.y, true);
        } else {
            down(x, buttons.front(), height);
        }
        across(x, display_out.x, height, lit);
        across(display_out.x, value_in.x - 2, height, lit);
    }

    void battle_group() const {
        const bool lit = group == Group::battle;
        const std::vector<int> buttons = heights(Group::battle);
        const int x = group_right + spur, height = battle_out.y;
        column(buttons, x, group_right, x);
        const int from = lit ? row_y : buttons.back();
        across(group_right, x, from, lit);
        down(x, from, height, lit);
        down(value_in.x, height, value_in.y, lit);
        across(x, battle_out.x, height, lit);
        across(battle_out.x, value_in.x, height, lit);
    }
};

void give_buttons_normal_look() {
    for (int module = 0; module < module_count; ++module)
        give_normal_look(options_slot::first_selector + module);
    for (const OptionRow& option : option_rows())
        give_normal_look(option.button);
    for (int i = 0; i < value_entry_limit; ++i)
        give_normal_look(value_button(i));
}

} // namespace

void draw_connectors(BITMAP* target, const OptionsState& state) {
    const EffectsHeld held;
    draw_text_window_from_bitmap(target, value_window, -1);
    give_buttons_normal_look();
    Bands{target, state}.draw();
}

} // namespace vcc
