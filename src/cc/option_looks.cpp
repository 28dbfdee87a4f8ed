#include "cc/option_looks.h"

#include "cc/sets.h"
#include "core/text.h"
#include "settings/settings.h"
#include "text/screen_texts.h"

namespace vcc {

namespace {

constexpr std::size_t label_length = 30;

void set_visible(int index, bool visible) {
    option_slot(index).draw_flags[0] = option_toggle(index).draw_flags[0] = visible ? ' ' : 'n';
}

void set_label(int value, std::string_view label) {
    label = label.substr(0, label_length); // a longer one would run out of the value window, where nothing erases it
    for (int index : {value_button(value), value_record(value)}) {
        store_text(option_slot(index).text, label);
        store_text(option_toggle(index).text, label);
    }
}

void grey_out(int index) {
    for (Slot* record : {&option_slot(index), &option_toggle(index)})
        record->fore_colour = record->back_colour = disabled_colour;
    option_slot(index).toggle = -1;
}

} // namespace

void give_normal_look(int index) {
    option_slot(index).fore_colour = option_slot(index).back_colour;
}

void highlight(int index) {
    option_slot(index).fore_colour = option_toggle(index).back_colour;
}

void rest_value(const OptionRow& option, int value) {
    give_normal_look(value_button(value));
    if (entry_of(option, value) == Entry::grey)
        option_slot(value_button(value)).fore_colour = disabled_colour;
}

void light_value(int value) {
    option_slot(value_button(value)).fore_colour = option_toggle(value_record(value)).fore_colour;
}

void set_entry(const OptionRow& option, int value) {
    set_label(value, value < offered_values(option) ? value_label(option, value) : std::string_view{});
    const Entry entry = entry_of(option, value);
    if (entry == Entry::as_it_was)
        return;
    for (int index : {value_button(value), value_record(value)}) {
        set_visible(index, entry != Entry::hidden);
        option_slot(index).toggle = entry == Entry::choosable || entry == Entry::shown ? index : -1;
        if (entry != Entry::hidden)
            give_normal_look(index);
        if (entry == Entry::grey)
            option_slot(index).fore_colour = disabled_colour;
    }
    if (entry != Entry::hidden)
        option_slot(value_button(value)).action = entry == Entry::shown ? 0 : option.choose_code;
}

void set_explanation(int first) {
    for (int line = 0; line < explanation_lines && info_set.has_slot(line + 1); ++line)
        store_text(info_set.slots[static_cast<std::size_t>(line) + 1].text, screen_text(first + line));
}

void show_loop_button(bool shown) {
    constexpr int button = options_slot::loop_button;
    set_visible(button, shown);
    option_slot(button).toggle = option_toggle(button).toggle = shown ? button : -1;
}

void show_loop_label(Module module) {
    Slot& one = option_slot(options_slot::loop_label);
    Slot& all = option_toggle(options_slot::loop_label);
    if (theme_loop[index_of(module)] == 1) {
        store_text(all.text, screen_text(screen_text_number::loop_all));
        hide(one);
        show(all);
        highlight(options_slot::loop_button);
    } else {
        std::string text = numbered_screen_text(screen_text_number::loop_one, settings.theme[index_of(module)] + 1);
        pad_text(text, 15, ' ');
        store_text(one.text, text);
        show(one);
        hide(all);
        give_normal_look(options_slot::loop_button);
    }
}

void show_loop_controls(Module module) {
    show_loop_button(true);
    show_loop_label(module);
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

} // namespace vcc
