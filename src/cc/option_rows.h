// The options, one row each: button, setting, values, labels, explanation and action codes. Stepping, choosing, the
// value panel, the pointer's behaviour and the explanation box all read these rows.
#pragma once

#include "cc/state.h"
#include "core/installation.h"

#include <array>
#include <optional>
#include <span>
#include <string_view>

namespace vcc {

inline constexpr int value_entry_limit = options_slot::value_count;

/// Labels of values: consecutive texts of the screens.
struct ValueLabels {
    int first = 0;
    int count = 0; ///< 0: the names of the themes

    constexpr bool empty() const { return count == 0; }
};

/// Slot of value entry i's button; the next record holds the entry's value and marker.
constexpr int value_button(int i) {
    return options_slot::first_value + 2 * i;
}
constexpr int value_record(int i) {
    return value_button(i) + 1;
}

/// Group of the option's connector lines.
enum class Group { none, sound, display, battle };
enum class Needs { nothing, sound, music };
enum class Stepping {
    wrap, ///< one up or down, from one end to the other
    flip  ///< 0 becomes 1, anything else 0
};

/// Reads and writes an option's setting.
struct OptionValue {
    int (*get)();
    void (*set)(int value);
};

struct OptionRow {
    Row row;
    std::string_view name; ///< of its actions: step_NAME and choose_NAME
    int button;            ///< slot of the option's button
    Group group;
    int step_code;                ///< action code of the button
    int choose_code;              ///< action code of the value buttons
    Needs needs = Needs::nothing; ///< what must be in use, or the row does nothing
    Stepping stepping = Stepping::wrap;
    int offered = 0; ///< values that are shown and can be reached; 0: as many as there are themes
    ValueLabels labels = {};
    OptionValue value;
    int explanation;                   ///< number of its first line among the texts of the screens
    bool shown_when_pointed_at = true; ///< pointing at the button shows the row

    int get() const { return value.get(); }
    void set(int number) const { value.set(number); }
};

std::span<const OptionRow> option_rows();

/// The row with a number, button slot, step code or choose code; null if there is none.
const OptionRow* find_row(Row row);
const OptionRow* row_of_button(int slot);
const OptionRow* row_of_step_code(int code);
const OptionRow* row_of_choose_code(int code);

/// The rows of a module's sound, which go with the module selector.
constexpr bool is_sound_row(Row row) {
    return row <= Row::theme;
}

/// Number of values that a row offers now, 0 to 11.
int offered_values(const OptionRow& option);

/// Label of a value: from the row's list, or the theme's name. Empty outside the list.
std::string_view value_label(const OptionRow& option, int value);

/// The value one step forward or back among `offered` values. Pure.
int stepped_value(int value, int offered, Stepping stepping, bool forward);

/// A depth setting that the display offers, if possible: from each depth that is not offered, in order, it moves to the
/// neighbour in `direction` (+1, -1) if that is offered. `offered` are the depth flags. Pure.
int settled_depth(int depth, int direction, const std::array<int, 3>& offered);

/// Text of the screens with which a row's explanation begins (also that of Row::loop_theme); nothing for any other row.
std::optional<int> explanation_of(Row row);

/// Whether the sound or music that a row needs is in use.
bool needs_met(Needs needs);

} // namespace vcc
