#include "app/module_state.h"

#include "core/clock.h"
#include "core/scope.h"
#include "display/pointer.h"
#include "display/switching.h"
#include "platform/files.h"
#include "settings/keyboard_layout.h"

#include <allegro.h>
#include <allegro/internal/aintern.h>

#include <algorithm>
#include <clocale>
#include <span>
#include <vector>

namespace vcc {

namespace {

constexpr int repeat_delay_ms = 250, repeat_rate_ms = 33; ///< the library's own

struct Timer {
    void (*plain)();
    void (*with_value)(void*);
    void* value;
    bool operator==(const Timer&) const = default;
};

std::vector<Timer> running_timers() {
    std::vector<Timer> timers;
    for (const TIMER_QUEUE& row : std::span<const TIMER_QUEUE>(_timer_queue, MAX_TIMERS))
        if (row.proc || row.param_proc)
            timers.push_back({row.proc, row.param_proc, row.param});
    return timers;
}

struct KeptGlobals {
    SwitchSet<FONT*> text_font{font};
    SwitchSet<int> gui_text{gui_fg_color}, gui_grey{gui_mg_color}, gui_ground{gui_bg_color};
    SwitchSet<volatile int> frozen{freeze_mouse_flag};
    SwitchSet<void (*)(int)> mouse{mouse_callback}, keys{keyboard_lowlevel_callback};
    SwitchSet<int (*)(int)> key{keyboard_callback};
    SwitchSet<int (*)(int, int*)> unicode_key{keyboard_ucallback};
};

struct Before {
    std::vector<Timer> timers = running_timers();
    std::string locale = std::setlocale(LC_ALL, nullptr);
    DIGI_DRIVER* sound = digi_driver;
    int colour_conversion = get_color_conversion();
    int wheel = mouse_z; ///< turning it in a module must not move the menu's focus
    int effects_volume = 0, music_volume = 0;
};

// Each restores one thing; true if the module should have done so.

bool timers_left(const Before& before) {
    bool left = timer_driver == nullptr;
    for (const Timer& timer : running_timers()) {
        if (std::ranges::count(before.timers, timer) != 0)
            continue;
        timer.plain ? remove_int(timer.plain) : remove_param_int(timer.with_value, timer.value);
        left = true;
    }
    start_tick();
    return left;
}

bool voices_left(const Before& before) {
    bool left = false;
    stop_midi();
    for (int voice = 0; digi_driver && voice < VIRTUAL_VOICES; ++voice) {
        if (!voice_check(voice))
            continue;
        left = left || voice_get_position(voice) >= 0;
        deallocate_voice(voice);
    }
    set_volume(before.effects_volume, before.music_volume);
    if (digi_driver != before.sound)
        remove_sound(); // the next pass installs its own again
    return left;
}

bool keyboard_left(const Before&) {
    const bool left = keyboard_driver == nullptr;
    install_keyboard_hooks(nullptr, nullptr);
    if (left || keyboard_needs_poll()) { // a module that polls once leaves that to all that follow
        remove_keyboard();
        start_keyboard();
    }
    set_keyboard_rate(repeat_delay_ms, repeat_rate_ms);
    return left;
}

/// Reinstalling it resets range, speed, polling and the system's pointer.
bool mouse_left(const Before& before) {
    const bool left = mouse_driver == nullptr;
    select_mouse_cursor(MOUSE_CURSOR_ALLEGRO);
    remove_mouse();
    install_mouse();
    position_mouse_z(before.wheel);
    return left;
}

bool clipping_left(const Before&) {
    if (!screen)
        return false;
    const bool left = !get_clip_state(screen) || screen->cl != 0 || screen->ct != 0 || screen->cr != screen->w ||
                      screen->cb != screen->h;
    set_clip_state(screen, TRUE);
    set_clip_rect(screen, 0, 0, screen->w - 1, screen->h - 1);
    return left;
}

bool formats_left(const Before& before) {
    drawing_mode(DRAW_MODE_SOLID, nullptr, 0, 0);
    set_color_conversion(before.colour_conversion);
    set_uformat(U_ASCII);
    std::setlocale(LC_ALL, before.locale.c_str());
    return false;
}

bool callbacks_left(const Before&) {
    set_display_switch_mode(SWITCH_BACKGROUND); // forgets them; restore_display() registers ours
    install_close_button();
    return false;
}

struct StateRow {
    const char* what;
    bool (*left)(const Before&);
};
constexpr StateRow state_rows[] = {
    {"timers", timers_left},
    {"sounds", voices_left},
    {"no keyboard", keyboard_left},
    {"no mouse", mouse_left},
    {"a clipping rectangle", clipping_left},
    {"", formats_left},
    {"", callbacks_left},
};

/// The library still refers to a sprite and a bitmap that the module may have destroyed.
void hide_pointer() {
    if (pointer_picture)
        mouse_sprite = pointer_picture.get();
    if (_mouse_screen != screen)
        _mouse_screen = nullptr;
    show_mouse(nullptr);
}

} // namespace

ModuleOutcome run_restoring_state(const std::function<std::uint8_t()>& module) {
    Before before;
    get_volume(&before.effects_volume, &before.music_volume);
    const KeptGlobals kept;
    ModuleOutcome outcome;
    {
        const platform::FolderVisit back_at_the_end(".");
        const std::string folder = platform::whole_name(".");
        outcome.result = module();
        if (platform::whole_name(".") != folder)
            outcome.left = "another working folder";
    }
    hide_pointer();
    for (const StateRow& row : state_rows)
        if (row.left(before))
            outcome.left += (outcome.left.empty() ? "" : ", ") + std::string(row.what);
    return outcome;
}

} // namespace vcc
