#include "core/clock.h"
#include "interaction/focus.h"
#include "interaction/keys.h"
#include "interaction/player_input.h"
#include "interaction/screen_run.h"
#include "screen/draw.h"
#include "sound/sound.h"
#include "text/fonts.h"

#include <algorithm>

namespace vcc {

namespace {

constexpr int display_time_unit_ms = 100;
constexpr int display_time_limit = 100; ///< ten seconds: a damaged file must not stall the program

int next_slot(const ScreenRun& run) {
    return (run.current + 1) % run.set->slot_count();
}

int wait_on_slot(ScreenRun& run, bool no_wait) {
    const Slot& slot = run.slot();
    // Entry fields look like their toggle record while they are edited.
    const Slot* const edited = slot.input_mode != 0 ? run.set->toggle(slot.toggle) : nullptr;
    const Slot& look = edited ? *edited : slot;
    if (slot.toggle == 0)
        update_screen(run.target); // nothing on this slot will send what was drawn before
    select_font(look.font);
    return await_input(run, look, true, no_wait);
}

/// Codes after which a button keeps its look, because what follows draws it.
bool keeps_look(int code) {
    return code == key::enter || code == key::escape || code == key::alt_x || code == key::left_button ||
           code == key::right_button || code == key::step_back || code == key::step_forward;
}

void redraw_quietly(ScreenRun& run) {
    const EffectsHeld quiet;
    draw_slot(run.target, run.set->slots, run.current);
}

void show_pressed(ScreenRun& run) {
    const Slot& slot = run.slot();
    if (slot.sound_act != 0)
        play_effect(slot.sound_act);
    if (slot.activated == 0)
        return;
    draw_slot(run.target, run.set->toggles, slot.activated);
    update_screen(run.target);
    wait_ms(pressed_look_ms(slot));
}

int accept(ScreenRun& run) {
    if (run.slot().input_mode == 0) {
        show_pressed(run);
        return step_activated;
    }
    run.current = next_slot(run);
    run.direction = 1;
    return key::enter;
}

/// Moves the focus by a key. Until the keyboard places the pointer, arrows and End go to slot 0: odd on purpose.
void navigate(ScreenRun& run, int code) {
    const int last = run.set->slot_count() - 1;
    const auto go = [&run](int to, int direction) {
        run.current = player_input.pointer_by_keyboard != 0 ? to : 0;
        run.direction = direction;
    };
    switch (code) {
    case key::home:
        go(0, 1);
        break;
    case key::up:
    case key::left:
        go(run.current > 0 ? run.current - 1 : last, -1);
        break;
    case key::down:
    case key::right:
        go(next_slot(run), 1);
        break;
    case key::end:
        go(last, -1);
        break;
    case key::page_up:
    case key::ctrl_page_up:
        run.direction = -1;
        return;
    case key::page_down:
    case key::ctrl_page_down:
        run.direction = 1;
        return;
    default:
        return;
    }
    // `single`: the pointer cannot take the focus elsewhere.
    if (const int found = pick_focus(*run.set, run.current, run.direction, true); found >= 0) {
        run.current = found;
        place_pointer(run.slot());
    }
    player_input.pointer_by_keyboard = 1;
}

} // namespace

int pressed_look_ms(const Slot& slot) {
    return std::clamp(slot.display_time, 0, display_time_limit) * display_time_unit_ms;
}

int interaction_step(ScreenRun& run, bool no_wait) {
    const FontSelection keep_font(drawing.current_font);
    const int focus = pick_focus(*run.set, run.current, run.direction, false);
    if (!run.set->has_slot(focus)) {
        run.current = 0;
        return step_no_slot;
    }
    run.current = focus;
    const int code = wait_on_slot(run, no_wait);
    if (run.slot().input_mode != 0 || !keeps_look(code))
        redraw_quietly(run);
    if (code == key::left_button || code == key::enter)
        return accept(run);
    if (code == key::right_button)
        return key::escape;
    navigate(run, code);
    return code;
}

} // namespace vcc
