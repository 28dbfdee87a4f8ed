#include "cc/screens.h"

#include "cc/actions.h"
#include "cc/load.h"
#include "cc/option_looks.h"
#include "cc/options_screen.h"
#include "cc/sets.h"
#include "cc/theme_player.h"
#include "core/gamepad.h"
#include "core/scope.h"
#include "core/text.h"
#include "display/buffers.h"
#include "display/graphics_mode.h"
#include "interaction/help.h"
#include "interaction/screen_run.h"
#include "screen/draw.h"
#include "screen/draw_slot.h"
#include "settings/keyboard_layout.h"
#include "settings/settings.h"
#include "sound/music.h"
#include "sound/sound.h"
#include "text/fonts.h"
#include "text/screen_texts.h"

#include <algorithm>

namespace vcc {

namespace {

constexpr int clear_colour = 7;

/// Redraws the part of the picture that a slot's text covers.
void draw_around(BITMAP* target, const SlotSet& set, const Slot& slot, int width) {
    const EffectsHeld quiet;
    const SwitchSet whole(drawing.full_redraw, 1);
    const auto [x, y] = slot_position(slot);
    set_clip_rect(target, x, y, x + width, y + cell_height(slot.font) + 1);
    draw_slots(target, set.slots);
    set_clip_rect(target, 0, 0, target->w - 1, target->h - 1);
    update_screen(target);
}

/// Makes hints name keys or, for a gamepad, its buttons, where the installation has words for both. Redraws them on the
/// picture `shown`, if any.
void name_hints(BITMAP* shown, SlotSet& set, bool for_gamepad) {
    for (int pair = 0; pair < hint_pairs; ++pair) {
        const int number = screen_text_number::hints + 2 * pair;
        const std::string_view old_text = screen_text(for_gamepad ? number : number + 1),
                               new_text = screen_text(for_gamepad ? number + 1 : number);
        if (old_text.empty() || new_text.empty())
            continue;
        for (Slot& slot : set.slots) {
            if (text_of(slot.text) != old_text)
                continue;
            store_text(slot.text, new_text);
            if (shown)
                draw_around(shown, set, slot,
                            std::max(text_width(slot.font, old_text), text_width(slot.font, new_text)));
        }
    }
}

void open_help(BITMAP* target, SlotSet& set, int current) {
    const SwitchSet up(cc_screen, CcScreen::help);
    const SwitchSet whole(drawing.full_redraw, anti_aliased_text ? 1 : drawing.full_redraw);
    show_help({target, graphic_buffer(help_save_buffer), &message_set, &set.slots[static_cast<std::size_t>(current)],
               [target] { follow_music(target); }});
}

ScreenResult run_set(BITMAP*& target, SlotSet& set) {
    bool for_gamepad = gamepad_used;
    name_hints(nullptr, set, for_gamepad);
    ScreenOwner owner;
    if (cc_screen == CcScreen::options)
        owner.drawn = [&] { options_screen.select_module(target, Module::control_centre); };
    owner.activated = [&](int slot) { return carry_out_action(target, set, slot); };
    owner.help = [&](int slot) { open_help(target, set, slot); };
    owner.step = [&](int slot, bool forward) { step_value(target, set, slot, forward); };
    owner.pointer_over = [&](int slot) { on_pointer_over(target, slot); };
    owner.every_frame = [&] {
        follow_music(target);
        if (for_gamepad != gamepad_used)
            name_hints(target, set, for_gamepad = gamepad_used);
    };
    return run_screen(target, set, owner);
}

ScreenResult run_menu(BITMAP*& target) {
    cc_screen = CcScreen::menu;
    options_screen.depth_at_menu = settings.bitmap_depth;
    keep_text_background(menu_set);
    return run_set(target, menu_set);
}

bool other_display_mode_chosen() {
    follow_window_manager();
    return (settings.screen_mode != 0) != (fullscreen != windowed);
}

/// Rebuilds the display at the chosen depth; false if the pictures cannot be loaded again.
bool change_depth(BITMAP*& target) {
    const EffectsHeld held;
    return !rebuild_display(other_display_mode_chosen()) || reload_pictures(target);
}

void restart_cc_music() {
    if (!needs_met(Needs::music))
        return;
    use_effects_volume(Module::control_centre);
    if (options_screen.play_theme())
        show_loop_label(Module::control_centre);
}

ScreenResult after_options(BITMAP*& target, ScreenResult next) {
    load_settings();
    if (settings.bitmap_depth != options_screen.depth_at_menu) {
        if (!change_depth(target))
            return ScreenResult::leave;
    } else if (other_display_mode_chosen() && mode_range == ModeRange::both) {
        switch_display_mode(true);
    }
    options_screen.select_module(target, Module::control_centre);
    restart_cc_music();
    apply_keyboard_layout();
    fill_fields();
    give_normal_look(options_screen.selector_button());
    return next;
}

ScreenResult run_options(BITMAP*& target) {
    cc_screen = CcScreen::options;
    options_screen.open();
    keep_text_background(options_set);
    const ScreenResult next = run_set(target, options_set);
    return target ? after_options(target, next) : next;
}

void menu_pointer_over(BITMAP* target, int slot) {
    const auto found = std::ranges::find(menu_slot::previews, slot, &menu_slot::Preview::slot);
    if (found == menu_slot::previews.end())
        return;
    const EffectsHeld held;
    draw_slot(target, menu_set.slots, found->picture);
}

} // namespace

std::optional<Module> run_cc_screens(BITMAP* target) {
    prepare_background_copies();
    themes.shown = settings.theme[cc_module]; // another theme may have begun while the pictures were loaded
    options_screen.select_module(target, Module::control_centre);
    if (needs_met(Needs::music)) {
        show_loop_label(Module::control_centre);
        const EffectsHeld held;
        options_screen.draw_row(target, *find_row(Row::theme));
    }
    clear_to_colour(target, clear_colour);
    for (ScreenResult state = ScreenResult::menu;;) {
        switch (state) {
        case ScreenResult::menu:
            state = run_menu(target);
            break;
        case ScreenResult::options:
            state = run_options(target);
            break;
        case ScreenResult::hq:
            return Module::hq;
        case ScreenResult::factory:
            return Module::factory;
        case ScreenResult::battle:
            return Module::battle;
        case ScreenResult::leave:
            return {};
        }
    }
}

void on_pointer_over(BITMAP* target, int slot) {
    if (cc_screen == CcScreen::menu)
        menu_pointer_over(target, slot);
    else if (cc_screen == CcScreen::options)
        options_screen.point(target, slot);
}

void follow_music(BITMAP* target) {
    if (!needs_met(Needs::music) || !music_voice_running())
        return;
    if (notice_theme(options_screen.selected_module) && music_on && options_screen.theme_display_live() &&
        options_screen.option_row == Row::theme) {
        options_screen.draw_row(target, *find_row(Row::theme));
        update_screen(target);
    }
    if (!music_on)
        disable_music_controls();
}

} // namespace vcc
