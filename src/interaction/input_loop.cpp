// The input loop: runs frame by frame until a key, a click, a wheel step or a move onto another slot.
#include "core/gamepad.h"
#include "core/mouse_buttons.h"
#include "core/text.h"
#include "core/window_state.h"
#include "display/buffers.h"
#include "interaction/field_entry.h"
#include "interaction/focus.h"
#include "interaction/keys.h"
#include "interaction/player_input.h"
#include "interaction/screen_run.h"
#include "screen/draw.h"
#include "settings/settings.h"
#include "sound/music.h"
#include "sound/sound.h"
#include "x11/display.h"

#include <allegro.h>

#include <algorithm>
#include <optional>

namespace vcc {

namespace {

constexpr int switched_out_rest_ms = 10, gamepad_rest_ms = 10;

/// Buttons just pressed; none while a reported one is still held.
int newly_pressed(int held) {
    if (held & player_input.reported_buttons)
        return 0;
    return player_input.reported_buttons = held;
}

/// 1 up, -1 down, 0 none.
int wheel_step() {
    const int step = std::clamp(mouse_z - player_input.wheel, -1, 1);
    player_input.wheel += step;
    return step;
}

/// How the loop has drawn the current slot since it was entered.
enum class PointerLook { unknown, over, away };

class InputLoop {
public:
    explicit InputLoop(ScreenRun& run) : run_(run), slot_(run.slot()) {}

    /// What the pointer does in one frame.
    KeyEvent follow_pointer();

private:
    void show(PointerLook look);
    void report_pointer();
    KeyEvent click(int buttons);

    ScreenRun& run_;
    const Slot& slot_;
    PointerLook shown_ = PointerLook::unknown;
};

void InputLoop::report_pointer() {
    const EffectsHeld quiet;
    run_.owner->pointer_over(run_.current);
}

KeyEvent InputLoop::click(int buttons) {
    report_pointer();
    return {buttons, 0, KeyKind::ending};
}

/// Draws the current slot once as the pointer enters (with the sound of the highlighted look) or leaves.
void InputLoop::show(PointerLook look) {
    if (slot_.toggle == -1 || slot_.toggle == 0 || shown_ == look)
        return;
    shown_ = look;
    if (slot_.input_mode != 0) { // its highlighted look is drawn elsewhere, and must show the field's text
        if (Slot* const highlighted = run_.set->toggle(run_.current))
            store_text(highlighted->text, text_of(slot_.text));
    } else if (look == PointerLook::over) {
        draw_slot(run_.target, run_.set->toggles, run_.current);
    } else {
        const EffectsHeld quiet;
        draw_slot(run_.target, run_.set->slots, run_.current);
    }
    report_pointer();
    update_screen(run_.target);
}

KeyEvent InputLoop::follow_pointer() {
    const int pressed = newly_pressed(next_mouse_buttons() & key::both_buttons);
    if (pressed & key::right_button)
        return click(pressed);
    if (const int step = wheel_step())
        return {step > 0 ? key::up : key::down, 0, KeyKind::ending};
    const int over = slot_under_pointer(run_.current, run_.set->slots, false);
    if (over <= 0) { // slot 0, too: odd on purpose
        player_input.pointer_by_keyboard = 0;
        run_.reported_over = -1;
        show(PointerLook::away);
        return {key::over_nothing, 0, KeyKind::character};
    }
    // Another slot is reported once: otherwise the loop would never get to the keys on one that the focus skips.
    const bool arrived = over != run_.current && over != run_.reported_over;
    run_.reported_over = over == run_.current ? -1 : over;
    if (arrived)
        report_pointer();
    else
        show(over == run_.current ? PointerLook::over : PointerLook::away);
    if (pressed & key::left_button)
        return click(pressed);
    return arrived ? KeyEvent{key::over_other_slot, 0, KeyKind::ending} : KeyEvent{};
}

/// Redraws the display at the end, since it may have lost the picture.
void wait_while_switched_out(BITMAP* target) {
    if (!switched_out)
        return;
    pause_music_voice();
    while (switched_out && !close_requested)
        rest(switched_out_rest_ms);
    forget_gamepads(); // what is held was meant for the other program
    resume_music_voice();
    copy_to_screen(target);
    show_mouse(screen);
}

/// On a button or label Left and Right end the loop, too.
KeyEvent key_on_button(KeyEvent event) {
    if (event.kind == KeyKind::editing && (event.code == key::left || event.code == key::right))
        event.kind = KeyKind::ending;
    return event;
}

} // namespace

int await_input(ScreenRun& run, const Slot& look, bool clear_keyboard, bool no_wait) {
    if (clear_keyboard)
        forget_keys();
    InputLoop loop(run);
    std::optional<FieldEntry> field;
    if (run.slot().input_mode != 0)
        field.emplace(run, look, clear_keyboard);
    for (;;) {
        platform::take_display_events();
        const bool gamepad = poll_gamepads();
        KeyEvent event = read_key();
        const bool key_came = event.code != 0;
        if (!key_came) {
            event = loop.follow_pointer();
            wait_while_switched_out(run.target);
        } else {
            event = field ? field->apply(event) : key_on_button(event);
        }
        if (close_requested)
            event = {key::alt_x, 0, KeyKind::ending};
        run.owner->every_frame();
        const bool ends = event.kind == KeyKind::ending || no_wait;
        present_screen();
        if (key_came || ends || frame_rest == 0)
            rest(0);
        else
            platform::wait_for_input(gamepad ? std::min(frame_rest, gamepad_rest_ms) : frame_rest);
        if (!ends)
            continue;
        if (field)
            store_text(run.slot().text, field->text());
        return event.code;
    }
}

} // namespace vcc
