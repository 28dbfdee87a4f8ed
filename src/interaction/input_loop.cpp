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

/// How the loop has drawn the current slot since it was entered.
enum class PointerLook { unknown, over, away };

class InputLoop {
public:
    explicit InputLoop(ScreenRun& run) : run_(run), slot_(run.slot()) {}

    KeyEvent follow_pointer();

private:
    bool is_field() const { return slot_.input_mode != 0; }
    KeyEvent pointer_on_other(int over);
    void show(PointerLook look);
    void copy_field_text();
    void report_pointer();

    ScreenRun& run_;
    const Slot& slot_;
    PointerLook shown_ = PointerLook::unknown;
};

void InputLoop::report_pointer() {
    const EffectsHeld quiet;
    if (run_.owner->pointer_over)
        run_.owner->pointer_over(run_.current);
}

/// The highlighted look of an entry field is drawn elsewhere, and must show the field's text.
void InputLoop::copy_field_text() {
    if (is_field() && run_.set->has_toggle(run_.current))
        store_text(run_.set->toggles[run_.index()].text, text_of(slot_.text));
}

/// Draws the current slot once as the pointer enters (with the sound of the highlighted look) or leaves.
void InputLoop::show(PointerLook look) {
    if (slot_.toggle == -1 || slot_.toggle == 0 || shown_ == look)
        return;
    shown_ = look;
    copy_field_text();
    if (look == PointerLook::over && !is_field())
        draw_slot(run_.target, run_.set->toggles, run_.current);
    if (look == PointerLook::away && !is_field()) {
        const EffectsHeld quiet;
        draw_slot(run_.target, run_.set->slots, run_.current);
    }
    report_pointer();
    update_screen(run_.target);
}

/// Reports each slot once: otherwise the loop would never get to the keys on a slot that the focus skips.
KeyEvent InputLoop::pointer_on_other(int over) {
    if (run_.reported_over == over) {
        show(PointerLook::away);
        return {};
    }
    run_.reported_over = over;
    report_pointer();
    return {key::over_other_slot, 0, KeyKind::ending};
}

KeyEvent InputLoop::follow_pointer() {
    const PointerReading reading{next_mouse_buttons() & key::both_buttons, mouse_z,
                                 slot_under_pointer(run_.current, run_.set->slots, false)};
    const PointerNews news = judge_pointer(player_input.pointer, reading, run_.current);
    KeyEvent event;
    switch (news.place) {
    case PointerNews::Place::ignored:
        break;
    case PointerNews::Place::away:
        player_input.pointer_by_keyboard = 0;
        run_.reported_over = -1;
        show(PointerLook::away);
        return {key::over_nothing, 0, KeyKind::character};
    case PointerNews::Place::on_current:
        run_.reported_over = -1;
        show(PointerLook::over);
        break;
    case PointerNews::Place::on_other:
        event = pointer_on_other(reading.over);
        break;
    }
    if (news.code == 0)
        return event;
    const bool wheel = news.code == key::up || news.code == key::down;
    if (!wheel)
        report_pointer();
    return {news.code, 0, KeyKind::ending};
}

/// Redraws the display at the end, since it may have lost the picture.
void wait_while_switched_out(BITMAP* target) {
    if (!switched_out)
        return;
    const bool music = sound_on && music_on;
    if (music)
        pause_music_voice();
    while (switched_out && !close_requested)
        rest(switched_out_rest_ms);
    forget_gamepads(); // what is held was meant for the other program
    if (music)
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
        if (run.owner->every_frame)
            run.owner->every_frame();
        const bool ends = event.kind == KeyKind::ending || no_wait;
        present_screen();
        if (key_came || ends || frame_rest == 0)
            rest(0);
        else
            platform::wait_for_input(gamepad ? std::min(frame_rest, gamepad_rest_ms) : frame_rest);
        if (ends)
            return event.code;
    }
}

} // namespace vcc
