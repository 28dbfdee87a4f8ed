#include "cc/option_rows.h"

#include "settings/settings.h"
#include "sound/sound.h"

#include <algorithm>

namespace vcc {

int selected_module = 0;
int option_row = 0;
int marked_value = 0;
int info_row = -1;

namespace {

using Labels = std::string_view;
constexpr Labels volume_labels[] = {"OFF",     "Level 1", "Level 2", "Level 3", "Level 4",  "Level 5",
                                    "Level 6", "Level 7", "Level 8", "Level 9", "Level MAX"};
constexpr Labels screen_mode_labels[] = {"Windowed", "Fullscreen"};
constexpr Labels resolution_labels[] = {"320x200", "640x400", "640x480", "800x600", "1024x768"};
constexpr Labels depth_labels[] = {"32 Bit", "24 Bit", "16 Bit", "15 Bit"};
constexpr Labels on_off_labels[] = {"OFF", "ON"};
constexpr Labels speed_labels[] = {"SLOW", "MEDIUM", "FAST", "MAXIMUM"};
constexpr Labels delay_labels[] = {"SHORT", "MEDIUM", "LONG", "MAXIMUM"};
constexpr Labels detail_labels[] = {"LOW", "MEDIUM", "HIGH", "MAXIMUM"};
constexpr Labels keyboard_labels[] = {"US", "German", "Finnish", "France", "Italy", "UK"};

std::size_t module_index() {
    return static_cast<std::size_t>(selected_module);
}

template <int Settings::*Member>
int get_member() {
    return settings.*Member;
}
template <int Settings::*Member>
void set_member(int value) {
    settings.*Member = value;
}

template <int Settings::*Member>
constexpr OptionRow plain_row(int row, int button, int group, int step_code, int choose_code, Stepping stepping,
                              int offered, std::span<const Labels> labels, bool shown_when_pointed_at = true) {
    return {row,      button,  group,  step_code,           choose_code,         Needs::nothing,
            stepping, offered, labels, &get_member<Member>, &set_member<Member>, shown_when_pointed_at};
}

const OptionRow rows[] = {
    {row::effects, 22, 1, 7, 20, Needs::sound, Stepping::wrap, 11, volume_labels,
     [] { return settings.volumes[module_index()].effects; },
     [](int value) { settings.volumes[module_index()].effects = value; }, true},
    {row::music, 24, 1, 8, 21, Needs::music, Stepping::wrap, 11, volume_labels,
     [] { return settings.volumes[module_index()].music; },
     [](int value) { settings.volumes[module_index()].music = value; }, true},
    {row::theme,
     26,
     1,
     9,
     22,
     Needs::music,
     Stepping::wrap,
     0,
     {},
     [] { return settings.theme[module_index()]; },
     [](int value) { settings.theme[module_index()] = value; },
     true},
    {row::screen_mode, 29, 2, 10, 23, Needs::nothing, Stepping::flip, 2, screen_mode_labels,
     [] { return static_cast<int>(settings.screen_mode); },
     [](int value) { settings.screen_mode = static_cast<std::int8_t>(value); }, true},
    plain_row<&Settings::resolution>(row::resolution, 31, 2, 12, 24, Stepping::wrap, 5, resolution_labels, false),
    plain_row<&Settings::bitmap_depth>(row::depth, 33, 2, 11, 25, Stepping::wrap, 3, depth_labels),
    plain_row<&Settings::brontar_anim>(row::animations, 36, 3, 13, 26, Stepping::flip, 2, on_off_labels),
    plain_row<&Settings::sprite_speed>(row::sprite_speed, 38, 3, 14, 27, Stepping::wrap, 4, speed_labels),
    plain_row<&Settings::message_delay>(row::message_delay, 40, 3, 15, 28, Stepping::wrap, 4, delay_labels),
    plain_row<&Settings::message_detail>(row::message_detail, 42, 3, 16, 29, Stepping::wrap, 4, detail_labels),
    plain_row<&Settings::keyboard>(row::keyboard, 48, 2, 19, 37, Stepping::wrap, 2, keyboard_labels),
};

template <class Member>
const OptionRow* find_by(Member member, int value) {
    const auto found = std::ranges::find(rows, value, member);
    return found == std::end(rows) ? nullptr : found;
}

} // namespace

std::span<const OptionRow> option_rows() {
    return rows;
}
const OptionRow* find_row(int number) {
    return find_by(&OptionRow::row, number);
}
const OptionRow* row_of_button(int slot) {
    return find_by(&OptionRow::button, slot);
}
const OptionRow* row_of_step_code(int code) {
    return find_by(&OptionRow::step_code, code);
}
const OptionRow* row_of_choose_code(int code) {
    return find_by(&OptionRow::choose_code, code);
}

int offered_values(const OptionRow& option) {
    return option.labels.empty() ? std::clamp(number_of_themes, 0, value_entry_limit) : option.offered;
}

std::string_view value_label(const OptionRow& option, int value) {
    if (value < 0)
        return {};
    const auto index = static_cast<std::size_t>(value);
    if (option.labels.empty())
        return value < theme_limit ? sound_entries[first_theme_entry + index].name : std::string_view{};
    return index < option.labels.size() ? option.labels[index] : std::string_view{};
}

int stepped_value(int value, int offered, Stepping stepping, bool forward) {
    if (stepping == Stepping::flip)
        return value == 0 ? 1 : 0;
    const int top = std::max(offered - 1, 0);
    if (forward)
        return value < top ? value + 1 : 0;
    return value > 0 ? value - 1 : top;
}

bool needs_met(Needs needs) {
    switch (needs) {
    case Needs::sound:
        return sound_on != 0;
    case Needs::music:
        return sound_on != 0 && music_on != 0;
    case Needs::nothing:
        break;
    }
    return true;
}

} // namespace vcc
