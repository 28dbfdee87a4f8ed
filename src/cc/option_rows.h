// The options, one row each: what an option's button, setting, values, labels, explanation and action codes are.
// Stepping, choosing, the value panel, the pointer's behaviour and the explanation box all read this table.
#pragma once

#include "cc/state.h"
#include "core/installation.h"

#include <array>
#include <span>
#include <string_view>

namespace vcc {

inline constexpr int value_entry_limit = options_slot::value_count;
inline constexpr int explanation_lines = info_slot::line_count;
using Explanation = std::array<std::string_view, explanation_lines>;

/// Labels of values: numbers of texts of the screens that follow one another.
struct ValueLabels {
    int first = 0;
    int count = 0; ///< 0: the names of the themes

    constexpr bool empty() const { return count == 0; }
    constexpr int size() const { return count; }
};

/// Slot of value entry i's button; the record after it holds the entry's value and marker.
constexpr int value_button(int i) {
    return options_slot::first_value + 2 * i;
}
constexpr int value_record(int i) {
    return value_button(i) + 1;
}

/// Which connector lines lead to the option.
enum class Group { none, sound, display, battle };
enum class Needs { nothing, sound, music };
enum class Stepping {
    wrap, ///< one up or down, from one end to the other
    flip  ///< 0 becomes 1, anything else 0
};

struct OptionRow {
    Row row;
    std::string_view name; ///< of its actions: step_NAME and choose_NAME
    int button;            ///< slot of the option's button
    Group group;
    int step_code;                ///< action code of the button
    int choose_code;              ///< action code of the value buttons
    Needs needs = Needs::nothing; ///< what must be in use for the row to do anything
    Stepping stepping;
    int offered; ///< values that can be reached here and are shown; 0: as many as there are themes
    ValueLabels labels;
    int (*get)();
    void (*set)(int value);
    int explanation;                   ///< number of its first line among the texts of the screens
    bool shown_when_pointed_at = true; ///< pointing at the button shows the row
};

std::span<const OptionRow> option_rows();

/// The row of a number, a button slot, a step code or a choose code; null when there is none.
const OptionRow* find_row(Row row);
const OptionRow* row_of_button(int slot);
const OptionRow* row_of_step_code(int code);
const OptionRow* row_of_choose_code(int code);

/// The rows of a module's sound, which the module selector belongs to.
constexpr bool is_sound_row(Row row) {
    return row <= Row::theme;
}

/// Values that a row offers now, 0 to 11.
int offered_values(const OptionRow& option);

/// Label of a value: of the row's list, or the theme's name. Empty outside the list.
std::string_view value_label(const OptionRow& option, int value);

/// What one step makes of a value: forward or back among `offered` values. Pure.
int stepped_value(int value, int offered, Stepping stepping, bool forward);

/// Where a depth setting ends that the display may lack: from every depth that is not offered, in order, it moves to
/// the neighbour in `direction` (+1, -1) if that is offered, else it stays. `offered` are the depth flags. Pure.
int settled_depth(int depth, int direction, const std::array<int, 3>& offered);

/// Whether sound and music are in use as the row needs them.
bool needs_met(Needs needs);

} // namespace vcc
