// The options, one row each: what an option's button, setting, values, labels and action codes are. Stepping, choosing,
// the value panel, the pointer's behaviour and the explanation box all read this table.
#pragma once

#include "core/installation.h"

#include <array>
#include <span>
#include <string_view>

namespace vcc {

extern int selected_module; ///< module index whose sound rows are shown
extern int option_row;      ///< row of the option that is shown
extern int marked_value;    ///< value whose entry is marked in the value panel
extern int info_row;        ///< row whose explanation the box shows; -1: none

namespace row {
inline constexpr int effects = 0, music = 1, theme = 2, screen_mode = 3, resolution = 4, depth = 5, animations = 6,
                     sprite_speed = 7, message_delay = 8, message_detail = 9, keyboard = 11, loop_theme = 86;
inline constexpr int last_sound_row = theme;
} // namespace row

inline constexpr int value_entry_limit = options_slot::value_count;
inline constexpr int explanation_lines = info_slot::line_count;

/// Slot of value entry i's button; the record after it holds the entry's value and marker.
constexpr int value_button(int i) {
    return options_slot::first_value + 2 * i;
}
constexpr int value_record(int i) {
    return value_button(i) + 1;
}

enum class Needs { nothing, sound, music };
enum class Stepping {
    wrap, ///< one up or down, from one end to the other
    flip  ///< 0 becomes 1, anything else 0
};

struct OptionRow {
    int row;
    int button;      ///< slot of the option's button
    int group;       ///< 1 sound, 2 display and keyboard, 3 battle: which connector lines lead to it
    int step_code;   ///< action code of the button
    int choose_code; ///< action code of the value buttons
    Needs needs;     ///< what must be in use for the row to do anything
    Stepping stepping;
    int offered; ///< values that can be reached here and are shown; 0: as many as there are themes
    std::span<const std::string_view> labels; ///< empty: the names of the themes
    int (*get)();
    void (*set)(int value);
    bool shown_when_pointed_at; ///< pointing at the button shows the row
};

std::span<const OptionRow> option_rows();

/// The row of a number, a button slot, a step code or a choose code; null when there is none.
const OptionRow* find_row(int number);
const OptionRow* row_of_button(int slot);
const OptionRow* row_of_step_code(int code);
const OptionRow* row_of_choose_code(int code);

/// Values that a row offers now, 0 to 11.
int offered_values(const OptionRow& option);

/// Label of a value: of the row's list, or the theme's name. Empty outside the list.
std::string_view value_label(const OptionRow& option, int value);

/// What one step makes of a value: forward or back among `offered` values. Pure.
int stepped_value(int value, int offered, Stepping stepping, bool forward);

/// Whether sound and music are in use as the row needs them.
bool needs_met(Needs needs);

/// The twelve lines of a row's explanation (also of row::loop_theme); empty for any other number.
std::span<const std::string_view, explanation_lines> explanation_of(int row);
bool has_explanation(int row);

} // namespace vcc
