#include "cc/connectors.h"

#include "cc/option_looks.h"
#include "cc/sets.h"
#include "screen/draw.h"
#include "screen/text_window.h"
#include "settings/settings.h"
#include "sound/sound.h"
#include "text/fonts.h"

namespace vcc {

namespace {

constexpr int band_thickness = 3;
constexpr int spur = 20;       ///< length of the line that leaves a button
constexpr int sound_stub = 11; ///< the same on the left of the sound group

class Bands {
public:
    void across(int from, int to, int y, bool lit = false) { bands_.push_back({true, from, to, y, lit}); }
    void down(int x, int from, int to, bool lit = false) { bands_.push_back({false, from, to, x, lit}); }
    std::vector<Band> take() { return std::move(bands_); }

private:
    std::vector<Band> bands_;
};

enum Junction { sound_in, value_in, display_out, battle_out };

void module_column(Bands& bands, const ConnectorLayout& at) {
    const bool lit = at.group == Group::sound;
    const int left = at.module_right + 1, right = at.module_right + 1 + spur;
    for (int y : at.selector_y)
        bands.across(left, right, y);
    bands.down(right, at.selector_y.front(), at.selector_y.back());
    const int y = at.selector_y[index_of(at.module)];
    bands.across(left, right, y, lit);
    bands.down(right, y, at.junction_y[sound_in], lit);
}

void sound_group_left(Bands& bands, const ConnectorLayout& at) {
    const bool lit = at.group == Group::sound;
    const int x = at.sound_left - sound_stub, end = at.sound_left + 9;
    bands.down(x, at.sound.front().y, at.sound.back().y);
    for (const ButtonPlace& button : at.sound)
        bands.across(x, end, button.y);
    if (lit) {
        bands.down(x, at.junction_y[sound_in], at.button_y, true);
        bands.across(x, end, at.button_y, true);
    }
    bands.across(at.module_right + 1 + spur, at.sound_left - 10, at.junction_y[sound_in], lit);
}

void sound_group_right(Bands& bands, const ConnectorLayout& at) {
    const bool lit = at.group == Group::sound;
    const int x = at.sound_right + spur, joint = at.junction_x[value_in], middle = at.sound[1].y;
    for (const ButtonPlace& button : at.sound)
        bands.across(at.sound_right, x, button.y);
    bands.down(x, at.sound.front().y, at.sound.back().y);
    if (lit) {
        bands.down(x, middle, at.button_y, true);
        bands.across(at.sound_right, x, at.button_y, true);
    }
    bands.across(x, joint, middle, lit);
    bands.down(joint, middle, at.junction_y[value_in], lit);
}

void value_column(Bands& bands, const ConnectorLayout& at) {
    const bool lit = at.group != Group::none;
    const int x = at.value_left - spur;
    bands.down(x, at.value_y.front(), at.value_y.back());
    for (int y : at.value_y)
        bands.across(x, at.value_left, y);
    if (at.marked_value < 0 || at.marked_value >= value_entry_limit)
        return;
    const int y = at.value_y[static_cast<std::size_t>(at.marked_value)];
    bands.across(x, at.value_left, y, lit);
    bands.down(x, at.junction_y[value_in], y, lit);
}

void display_group(Bands& bands, const ConnectorLayout& at) {
    const bool lit = at.group == Group::display;
    const int x = at.group_right + spur, joint = at.junction_x[value_in], height = at.junction_y[display_out];
    bands.down(x, at.display.front().y, at.display.back().y);
    for (const ButtonPlace& button : at.display)
        if (button.shown)
            bands.across(at.group_right, x, button.y);
    if (lit) {
        bands.across(at.group_right, x, at.button_y, true);
        bands.down(x, at.button_y, height, true);
        bands.down(joint, height - 1, at.junction_y[value_in], true);
    } else {
        bands.down(x, at.display.front().y, height);
    }
    bands.across(x, at.junction_x[display_out], height, lit);
    bands.across(at.junction_x[display_out], joint - 2, height, lit);
}

void battle_group(Bands& bands, const ConnectorLayout& at) {
    const bool lit = at.group == Group::battle;
    const int x = at.group_right + spur, joint = at.junction_x[value_in], height = at.junction_y[battle_out];
    bands.down(x, at.battle.front().y, at.battle.back().y);
    for (const ButtonPlace& button : at.battle)
        bands.across(at.group_right, x, button.y);
    const int from = lit ? at.button_y : at.battle.back().y;
    bands.across(at.group_right, x, from, lit);
    bands.down(x, from, height, lit);
    bands.down(joint, height, at.junction_y[value_in], lit);
    bands.across(x, at.junction_x[battle_out], height, lit);
    bands.across(at.junction_x[battle_out], joint, height, lit);
}

int button_height(int index) {
    const Slot& slot = option_slot(index);
    return row_y(slot.font, slot.row) + cell_height(slot.font) / 2;
}

std::vector<ButtonPlace> buttons_of(Group group) {
    std::vector<ButtonPlace> places;
    for (const OptionRow& option : option_rows())
        if (option.group == group)
            places.push_back({button_height(option.button), !is_hidden(option_slot(option.button))});
    return places;
}

int window_x(int window, int column) {
    return column_x(text_windows[static_cast<std::size_t>(window)].font, column);
}

ConnectorLayout layout_of(const OptionsState& state) {
    ConnectorLayout at;
    for (std::size_t i = 0; i < 4; ++i) {
        at.selector_y[i] = button_height(options_slot::first_selector + static_cast<int>(i));
        const Slot& junction = option_slot(options_slot::first_junction + static_cast<int>(i));
        at.junction_x[i] = junction.dest_x;
        at.junction_y[i] = junction.dest_y + (junction.box_height - junction.src_y) / 2;
    }
    at.sound = buttons_of(Group::sound);
    at.display = buttons_of(Group::display);
    at.battle = buttons_of(Group::battle);
    for (std::size_t i = 0; i < at.value_y.size(); ++i)
        at.value_y[i] = button_height(value_button(static_cast<int>(i)));
    at.module_right = window_x(module_window, text_windows[module_window].right - 1);
    at.sound_left = window_x(sound_group_window, text_windows[sound_group_window].left);
    at.sound_right = window_x(sound_group_window, text_windows[sound_group_window].right);
    at.group_right = window_x(group_window, text_windows[group_window].right);
    at.value_left = window_x(value_window, text_windows[value_window].left);
    if (const OptionRow* option = find_row(state.option_row)) {
        at.group = option->group;
        at.button_y = button_height(option->button);
    }
    at.module = state.selected_module;
    at.marked_value = state.marked_value;
    return at;
}

void give_buttons_normal_look() {
    for (int module = 0; module < module_count; ++module)
        give_normal_look(options_slot::first_selector + module);
    for (const OptionRow& option : option_rows())
        give_normal_look(option.button);
    for (int i = 0; i < value_entry_limit; ++i)
        give_normal_look(value_button(i));
}

} // namespace

std::vector<Band> connector_bands(const ConnectorLayout& layout) {
    Bands bands;
    module_column(bands, layout);
    sound_group_left(bands, layout);
    sound_group_right(bands, layout);
    value_column(bands, layout);
    display_group(bands, layout);
    battle_group(bands, layout);
    bands.across(layout.junction_x[value_in] - 1, layout.value_left - 19, layout.junction_y[value_in],
                 layout.group != Group::none);
    return bands.take();
}

void draw_connectors(BITMAP* target, const OptionsState& state) {
    const EffectsHeld held;
    draw_text_window_from_bitmap(target, value_window, -1);
    give_buttons_normal_look();
    const int resting = option_slot(options_slot::connector_colours).back_colour;
    const int lit = option_toggle(options_slot::connector_colours).fore_colour;
    for (const Band& band : connector_bands(layout_of(state))) {
        const int colour = band.lit ? lit : resting;
        if (band.horizontal)
            draw_hband(target, band.from, band.at, band.to, colour, band_thickness, 0, 0);
        else
            draw_vband(target, band.at, band.from, band.to, colour, band_thickness, 0, 0);
    }
}

} // namespace vcc
