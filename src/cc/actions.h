// What the slots of the control centre's screens do when they are activated: one row an action code.
#pragma once

#include "screen/slot.h"

#include <allegro.h>

#include <optional>
#include <span>

namespace vcc {

enum class ActionKind {
    end_screen,    ///< argument: result of the screen
    accept,        ///< take the entry fields, save, back to the menu
    step,          ///< argument unused: the option row knows its step code
    choose,        ///< the value stands in the record after the button
    select_module, ///< argument: module index
    take_name,
    take_address,
    loop_theme,
    reset,
    manual
};

struct ActionRow {
    int code;
    ActionKind kind;
    int argument;
};

std::span<const ActionRow> action_rows();
const ActionRow* find_action(int code); ///< null for a code that does nothing

/// Carries out the action of a slot of the running set; a value ends the screen with it.
std::optional<int> carry_out_action(BITMAP* target, const SlotSet& running, int slot);

/// A right click on a slot of the running set steps its option back; nothing for other slots.
void step_back(BITMAP* target, const SlotSet& running, int slot);

/// Opens the game's manual; failures are shown and logged.
void open_manual(BITMAP* target);

/// The result numbers of opening a document, with the retries that missing files get. `open` gives a result number,
/// `wait` takes milliseconds. Pure but for the two. Returns the number that is to be reported, or 33 when nothing is.
template <class Open, class Wait>
int open_with_retries(Open open, Wait wait) {
    constexpr int silent = 33, file_not_found = 2, path_not_found = 3, association_incomplete = 27;
    int result = open();
    if (result != file_not_found && result != path_not_found && result != association_incomplete)
        return result;
    for (int pause_ms : {1000, 2000, 3000}) {
        wait(pause_ms);
        result = open();
        if (result != file_not_found)
            return silent;
    }
    return file_not_found;
}

} // namespace vcc
