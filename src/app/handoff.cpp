// Hands the process to a game module and takes it back: what the screens rely on and a module may have changed.
#include "app/session.h"

#include "core/alert.h"
#include "core/clock.h"
#include "core/gamepad.h"
#include "core/installation.h"
#include "core/log.h"
#include "core/scope.h"
#include "core/version.h"
#include "display/graphics_mode.h"
#include "display/pointer.h"
#include "display/switching.h"
#include "platform/files.h"
#include "platform/shared_library.h"
#include "settings/config_file.h"
#include "settings/keyboard_layout.h"
#include "settings/settings.h"
#include "veldor_module.h"

#include <allegro.h>
#include <allegro/internal/aintern.h>

#include <algorithm>
#include <clocale>
#include <cstdint>
#include <span>
#include <string>
#include <type_traits>
#include <utility>
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

/// What a module may change without being told to restore it. Its own variables get back their values at the end.
struct Before {
    Before() { get_volume(&effects_volume, &music_volume); }

    std::vector<Timer> timers = running_timers();
    std::string locale = std::setlocale(LC_ALL, nullptr);
    DIGI_DRIVER* sound = digi_driver;
    int colour_conversion = get_color_conversion();
    int wheel = mouse_z; ///< turning it in a module must not move the menu's focus
    int effects_volume = 0, music_volume = 0;
    SwitchSet<FONT*> text_font{font};
    SwitchSet<int> gui_text{gui_fg_color}, gui_grey{gui_mg_color}, gui_ground{gui_bg_color};
    SwitchSet<volatile int> frozen{freeze_mouse_flag};
    SwitchSet<void (*)(int)> mouse{mouse_callback}, keys{keyboard_lowlevel_callback};
    SwitchSet<int (*)(int)> key{keyboard_callback};
    SwitchSet<int (*)(int, int*)> unicode_key{keyboard_ucallback};
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

bool keyboard_left() {
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

bool clipping_left() {
    if (!screen)
        return false;
    const bool left = !get_clip_state(screen) || screen->cl != 0 || screen->ct != 0 || screen->cr != screen->w ||
                      screen->cb != screen->h;
    set_clip_state(screen, TRUE);
    set_clip_rect(screen, 0, 0, screen->w - 1, screen->h - 1);
    return left;
}

void restore_silently(const Before& before) {
    drawing_mode(DRAW_MODE_SOLID, nullptr, 0, 0);
    set_color_conversion(before.colour_conversion);
    set_uformat(U_ASCII);
    std::setlocale(LC_ALL, before.locale.c_str());
    set_display_switch_mode(SWITCH_BACKGROUND); // forgets them; restore_display() registers ours
    install_close_button();
}

/// The library still refers to a sprite and a bitmap that the module may have destroyed.
void hide_pointer() {
    if (pointer_picture)
        mouse_sprite = pointer_picture.get();
    if (_mouse_screen != screen)
        _mouse_screen = nullptr;
    show_mouse(nullptr);
}

struct ModuleOutcome {
    std::uint8_t result = 0;
    std::string left; ///< what it should have cleaned up, for the log; empty if nothing
};

static_assert(std::is_same_v<veldor_hq_entry, veldor_battle_entry>);

std::uint8_t call_entry(Module module, void* entry) {
    if (module == Module::factory)
        return reinterpret_cast<veldor_factory_entry*>(entry)(static_cast<int>(mode_range), fullscreen,
                                                              static_cast<int>(screen_mode_range),
                                                              settings.bitmap_depth, version_number);
    return reinterpret_cast<veldor_hq_entry*>(entry)(fullscreen, version_number);
}

/// Runs a module and restores the library's and the process's state before its code is unloaded; see docs/modules.md.
/// The display's mode stays as the module left it.
ModuleOutcome run_restoring_state(Module module, void* entry) {
    const Before before;
    ModuleOutcome outcome;
    bool folder_left = false;
    {
        const platform::FolderVisit back_at_the_end(".");
        const std::string folder = platform::whole_name(".");
        outcome.result = call_entry(module, entry);
        folder_left = platform::whole_name(".") != folder;
    }
    hide_pointer();
    const std::pair<bool, const char*> checks[] = {
        {folder_left, "another working folder"}, {timers_left(before), "timers"},
        {voices_left(before), "sounds"},         {keyboard_left(), "no keyboard"},
        {mouse_left(before), "no mouse"},        {clipping_left(), "a clipping rectangle"},
    };
    restore_silently(before);
    for (const auto& [left, what] : checks)
        if (left)
            outcome.left += (outcome.left.empty() ? "" : ", ") + std::string(what);
    return outcome;
}

} // namespace

void run_module(Module module) {
    const char* const name = module_names[index_of(module)]; // of the library and its entry
    const std::string file = platform::module_file_name(name);
    std::string error;
    const platform::SharedLibrary library = platform::load_module(name, error);
    void* entry = library ? library.symbol(name) : nullptr;
    if (library && !entry)
        error = format_text("%s has no entry %s", file.c_str(), name);
    if (!entry) {
        show_mouse(screen);
        show_alert("CC: Error loading module!", file);
        write_log(format_text("Error loading module %s: %s", file.c_str(), error.c_str()));
        show_mouse(nullptr);
        return;
    }
    const int depth = get_color_depth();
    follow_window_manager();
    release_gamepads();
    const ModuleOutcome outcome = run_restoring_state(module, entry);
    release_gamepads();                                        // the module may have installed some
    fullscreen = outcome.result == 0 ? windowed : full_screen; // modules may return any other number
    if (!outcome.left.empty())
        write_log(format_text("%s has left %s", file.c_str(), outcome.left.c_str()));
    ensure_display(depth, file);
    select_config_file(); // the module may have written the shared file
}

void restore_display() {
    install_display_switching();
    install_close_button();
    load_mouse_pointer("CC: Error loading mousepointer!", "Error loading mousepointer!");
}

} // namespace vcc
