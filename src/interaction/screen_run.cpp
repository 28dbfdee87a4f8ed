#include "interaction/screen_run.h"

#include "core/log.h"
#include "core/mouse_buttons.h"
#include "display/buffers.h"
#include "display/graphics_mode.h"
#include "interaction/focus.h"
#include "interaction/keys.h"
#include "interaction/player_input.h"
#include "screen/draw.h"
#include "sound/music.h"

#include <algorithm>

namespace vcc {

namespace {

bool reaches_the_picture(const Slot& slot) {
    const auto [x1, y1, x2, y2] = slot_rect(slot);
    return x1 < layout_width && y1 < layout_height && x2 >= 0 && y2 >= 0;
}

bool has_a_picture(const Slot& slot) {
    return slot.graphic == 0 || is_text_window(slot) || graphic_buffer(slot.buffer);
}

/// Empty if one of the slots can be chosen.
std::string why_nothing_can_be_chosen(const SlotSet& set) {
    int inert = 0, hidden = 0, outside = 0, empty = 0;
    for (const Slot& slot : set.slots) {
        if (!is_selectable(slot))
            ++inert;
        else if (is_hidden(slot))
            ++hidden;
        else if (!reaches_the_picture(slot))
            ++outside;
        else if (!has_a_picture(slot))
            ++empty;
        else
            return {};
    }
    return format_text(
        "%s: nothing on it can be chosen: of its %d slots %d take no focus, %d are hidden, %d lie outside "
        "the picture, %d name a buffer without a picture",
        set.file.c_str(), set.slot_count(), inert, hidden, outside, empty);
}

void step_back(ScreenRun& run) {
    const int pointed = slot_under_pointer(run.current, run.set->slots, false);
    if (pointed < 0)
        return;
    run.current = pointed;
    run.owner->step(pointed, false);
}

ScreenOutcome carry_out(ScreenRun& run, int code) {
    switch (code) {
    case step_activated:
        return run.owner->activated(run.current);
    case step_no_slot:
        write_log(why_nothing_can_be_chosen(*run.set));
        return ScreenResult::leave;
    case key::escape:
        // A right click, too: odd on purpose. It is one if the right button, and no other, is held.
        if (mouse_buttons() != key::right_button)
            return ScreenResult::menu;
        step_back(run);
        return {};
    case key::alt_x:
        return ScreenResult::leave;
    case key::f1:
    case key::shift_f1:
    case key::ctrl_f1:
        run.owner->help(run.current);
        return {};
    case key::step_back:
    case key::step_forward:
        run.owner->step(run.current, code == key::step_forward);
        return {};
    default:
        carry_out_common_command(code);
        return {};
    }
}

} // namespace

void carry_out_common_command(int code) {
    if (code == key::f12)
        toggle_music();
    else if (code == key::alt_w && mode_range == ModeRange::both)
        switch_display_mode(true);
}

ScreenResult run_screen(BITMAP*& target, SlotSet& set, const ScreenOwner& owner) {
    forget_mouse_buttons(); // of a film or a module
    ScreenRun run;
    run.target = target;
    run.set = &set;
    run.owner = &owner;
    run.fields = draw_slot_set(target, set);
    owner.drawn();
    update_screen(target);
    // Slots that take the focus may be invisible.
    if (const std::string why = why_nothing_can_be_chosen(set);
        !why.empty() && std::ranges::any_of(set.slots, is_selectable))
        write_log(why);
    for (;;) {
        if (const ScreenOutcome result = carry_out(run, interaction_step(run)))
            return *result;
        run.target = target;
    }
}

} // namespace vcc
