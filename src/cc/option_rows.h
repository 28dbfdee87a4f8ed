// The options, one row each: button, setting, values, labels, explanation, action codes, and peculiarities. Stepping,
// choosing, the value panel, the pointer's behaviour and the explanation box all read these rows.
#pragma once

#include "core/installation.h"

#include <array>
#include <optional>
#include <span>
#include <string_view>

namespace vcc {

/// The options by their numbers; 10 is not used. One without a name here is written as Row{12}.
enum class Row : int {
    none = -1,
    effects = 0,
    music = 1,
    theme = 2,
    screen_mode = 3,
    resolution = 4,
    depth = 5,
    animations = 6,
    sprite_speed = 7,
    message_delay = 8,
    message_detail = 9,
    keyboard = 11,
    loop_theme = 86 ///< not an option, but it has an explanation
};

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
enum class Group { sound, display, battle };
enum class Needs { nothing, sound, music };
enum class Stepping {
    wrap, ///< one up or down, from one end to the other
    flip  ///< 0 becomes 1, anything else 0
};

/// How the value panel shows an entry.
enum class Entry {
    choosable, ///< a click chooses its value
    shown,     ///< a click does nothing
    grey,      ///< shown, but greyed out
    hidden,
    as_it_was
};

/// What only some options do; null: nothing.
struct OptionRules {
    Needs needs = Needs::nothing; ///< what must be in use, or the row does nothing
    Stepping stepping = Stepping::wrap;
    void (*apply)(Module module) = nullptr;   ///< puts a new value into effect
    void (*settle)(int direction) = nullptr;  ///< before the row is shown; direction (+1, -1) of the step
    bool (*may_step)(bool forward) = nullptr; ///< another condition than `needs`
    bool (*may_choose)() = nullptr;           ///< the same for the value buttons
    Entry (*entry)(int value) = nullptr;      ///< how the panel shows the values that are offered; null: as choosable
    bool shown_when_pointed_at = true;        ///< pointing at the button shows the row
    bool presses_twice = false;               ///< a step shows the button's pressed look once more
    bool presses_in_vain = false;             ///< a right click shows it even if the option cannot be stepped
    bool loops = false;                       ///< has the loop-theme button and label
    bool explained_when_chosen = false;       ///< choosing a value shows the explanation again
};

struct OptionRow {
    Row row;
    std::string_view name; ///< of its actions: step_NAME and choose_NAME
    int button;            ///< slot of the option's button
    Group group;
    int step_code;   ///< action code of the button
    int choose_code; ///< action code of the value buttons
    int explanation; ///< number of its first line among the texts of the screens
    ValueLabels labels;
    int offered;                    ///< values that are shown and can be reached; 0: as many as there are themes
    int& (*setting)(Module module); ///< the option's setting, for the sound options that of a module
    OptionRules rules = {};

    int get(Module module) const {
        const int value = setting(module);
        return rules.stepping == Stepping::flip ? value != 0 : value;
    }
    constexpr bool of_sound() const { return group == Group::sound; } ///< goes with the module selector
};

std::span<const OptionRow> option_rows();

/// The row with a number, or with a button or action code; null if there is none.
const OptionRow* find_row(Row row);
const OptionRow* find_row(int OptionRow::*member, int value);

/// What the options screen shows.
struct OptionsState {
    Module selected_module = Module::hq; ///< whose sound rows are shown
    Row option_row = Row::effects;       ///< whose values are shown; always an option's
    int marked_value = 0;                ///< value whose entry is marked in the value panel
    Row info_row = Row::none;            ///< whose explanation the box shows

    const OptionRow& shown_option() const { return *find_row(option_row); }

    /// Slot of the selected module's selector button.
    int selector_button() const { return options_slot::first_selector + static_cast<int>(selected_module); }
};

/// Number of values that a row offers now, 0 to 11.
int offered_values(const OptionRow& option);

/// How the panel shows an entry of a row now.
Entry entry_of(const OptionRow& option, int value);

/// Whether a value can be chosen: any theme that exists, and any other value that has a label.
bool is_choice(const OptionRow& option, int value);

/// Label of a value: from the row's list, or the theme's name. Empty outside the list.
std::string_view value_label(const OptionRow& option, int value);

/// The value one step forward or back among `offered` values. Pure.
int stepped_value(int value, int offered, Stepping stepping, bool forward);

/// A depth that the display offers, if possible: each depth not offered, in order, gives way to its neighbour in
/// `direction` (+1, -1) if that one is offered. `offered` are the depth flags. Pure.
int settled_depth(int depth, int direction, const std::array<int, 3>& offered);

/// First text of a row's explanation (Row::loop_theme has one, too); nothing for any other row.
std::optional<int> explanation_of(Row row);

/// Whether the sound or music that a row needs is in use.
bool needs_met(Needs needs);

} // namespace vcc
