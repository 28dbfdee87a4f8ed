// Running a screen made of slots. What the slots' actions mean is its owner's business.
#pragma once

#include "core/installation.h"
#include "screen/draw_slot.h"
#include "screen/slot.h"

#include <allegro.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vcc {

/// What a screen asks of whoever runs it. Every function may be empty.
struct ScreenOwner {
    std::function<void()> drawn; ///< the whole screen has been drawn for the first time
    /// A button or label was activated; a value ends the screen with it.
    std::function<std::optional<ScreenResult>(int slot)> activated;
    std::function<void(int slot)> help;         ///< F1, Shift+F1 or Ctrl+F1 on the current slot
    std::function<void(int slot)> right_click;  ///< the slot under the pointer, which is current now
    std::function<void(int slot)> pointer_over; ///< the pointer entered or left the current slot
    std::function<void()> every_frame;          ///< once per frame while the screen waits
};

/// What one screen carries while it runs; local to the run.
struct ScreenRun {
    BITMAP* target = nullptr; ///< off-screen picture, borrowed
    SlotSet* set = nullptr;   ///< borrowed
    const ScreenOwner* owner = nullptr;
    std::vector<std::string> edit_texts; ///< one a slot
    std::vector<FieldPlace> fields;      ///< one a slot
    int current = 0;
    int direction = 1;      ///< of the next focus search
    int reported_over = -1; ///< slot, other than the current one, on which the pointer was last reported; -1 none
};

/// Waits for input on the current slot and returns the code that ends the waiting. `look` gives the field's font, width
/// and colours. With `no_wait`, which no screen of ours needs, it returns after one frame.
int await_input(ScreenRun& run, const Slot& look, bool clear_keyboard, bool no_wait);

inline constexpr int step_activated = -1, step_no_slot = -2;

/// One interaction: picks the focus, waits, moves the focus or shows the pressed look. step_activated when the current
/// button or label was activated, step_no_slot when nothing can be selected, otherwise the key code (a left click is
/// 13, a right click 27). `no_wait` as above.
int interaction_step(ScreenRun& run, bool no_wait = false);

/// How long the pressed look of a slot stays, in milliseconds; at most ten seconds, whatever its record says.
int pressed_look_ms(const Slot& slot);

/// What every screen and help page does with a code: F12 stops and starts the music, Alt+W changes between window and
/// full screen. Nothing for any other code.
void carry_out_common_command(int code);

/// Draws the set and runs it until an action or command ends it. Esc ends it with `menu`, Alt+X and the window's close
/// button with `leave`; a set without anything to select ends with `leave` and a log line. An action may put another
/// picture in the place of `target`.
ScreenResult run_screen(BITMAP*& target, SlotSet& set, const ScreenOwner& owner);

} // namespace vcc
