// Runs a screen made of slots. Its owner decides what the slots' actions do.
#pragma once

#include "core/installation.h"
#include "screen/draw_slot.h"
#include "screen/slot.h"

#include <allegro.h>

#include <functional>
#include <optional>
#include <vector>

namespace vcc {

/// What a screen ends with: the next state.
enum class ScreenResult : int { menu = 0, options = 1, hq = 2, factory = 3, battle = 4, leave = leave_code };

using ScreenOutcome = std::optional<ScreenResult>; ///< nothing while the screen goes on

/// What a screen asks of its owner.
struct ScreenOwner {
    /// After the whole screen has been drawn for the first time.
    std::function<void()> drawn = [] {};
    /// A button or label was activated; a value ends the screen.
    std::function<ScreenOutcome(int slot)> activated = [](int) { return ScreenOutcome(); };
    /// F1, Shift+F1 or Ctrl+F1 on the current slot.
    std::function<void(int slot)> help = [](int) {};
    /// The value: back by a right click, both ways by a gamepad.
    std::function<void(int slot, bool forward)> step = [](int, bool) {};
    /// The pointer entered or left the current slot.
    std::function<void(int slot)> pointer_over = [](int) {};
    /// Once per frame while the screen waits.
    std::function<void()> every_frame = [] {};
};

struct ScreenRun {
    BITMAP* target = nullptr; ///< off-screen picture, borrowed
    SlotSet* set = nullptr;   ///< borrowed
    const ScreenOwner* owner = nullptr;
    std::vector<FieldPlace> fields; ///< one per slot
    int current = 0;
    int direction = 1;      ///< of the next focus search
    int reported_over = -1; ///< other slot last reported under the pointer; -1 none

    std::size_t index() const { return static_cast<std::size_t>(current); }
    Slot& slot() const { return set->slots[index()]; } ///< the current one
};

/// Waits for input on the current slot and returns the code that ends the wait. `look` gives the field's font, width
/// and colours; the slot gets the text that the player has typed. With `no_wait`, which no screen uses today, returns
/// after one frame.
int await_input(ScreenRun& run, const Slot& look, bool clear_keyboard, bool no_wait);

inline constexpr int step_activated = -1, step_no_slot = -2;

/// One interaction: picks the focus, waits, then moves the focus or shows the pressed look. Returns step_activated if
/// the current button or label was activated, step_no_slot if nothing can be selected, otherwise the key code (13 for a
/// left click, 27 for a right click). `no_wait` as above.
int interaction_step(ScreenRun& run, bool no_wait = false);

/// Duration of a slot's pressed look in milliseconds; at most ten seconds, whatever its record says.
int pressed_look_ms(const Slot& slot);

/// Carries out the commands that every screen and help page shares: F12 stops and starts the music, Alt+W switches
/// between window and full screen. Ignores other codes.
void carry_out_common_command(int code);

/// Draws the set and runs it until an action or command ends it: Esc with `menu`, Alt+X and the window's close button
/// with `leave`. A set with nothing to select ends with `leave` and a log line. An action may replace `target`.
ScreenResult run_screen(BITMAP*& target, SlotSet& set, const ScreenOwner& owner);

} // namespace vcc
