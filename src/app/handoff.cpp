#include "app/module_state.h"
#include "app/session.h"
#include "core/alert.h"
#include "core/gamepad.h"
#include "core/installation.h"
#include "core/log.h"
#include "core/version.h"
#include "display/graphics_mode.h"
#include "display/pointer.h"
#include "display/switching.h"
#include "platform/shared_library.h"
#include "settings/config_file.h"
#include "settings/settings.h"
#include "veldor_module.h"

#include <allegro.h>

#include <array>

namespace vcc {

namespace {

std::uint8_t call_hq(void* entry) {
    return reinterpret_cast<veldor_hq_entry*>(entry)(fullscreen, version_number);
}
std::uint8_t call_battle(void* entry) {
    return reinterpret_cast<veldor_battle_entry*>(entry)(fullscreen, version_number);
}
std::uint8_t call_factory(void* entry) {
    return reinterpret_cast<veldor_factory_entry*>(entry)(static_cast<int>(mode_range), fullscreen,
                                                          static_cast<int>(screen_mode_range), settings.bitmap_depth,
                                                          version_number);
}

/// By the number of the module.
constexpr std::array<std::uint8_t (*)(void* entry), module_names.size()> calls{call_hq, call_factory, call_battle};

void run_module(std::size_t module) {
    const char* const name = module_names[module]; // of the library and its entry
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
    const ModuleOutcome outcome = run_restoring_state([&] { return calls[module](entry); });
    release_gamepads();                                        // the module may have installed some
    fullscreen = outcome.result == 0 ? windowed : full_screen; // modules may return any other number
    if (!outcome.left.empty())
        write_log(format_text("%s has left %s", file.c_str(), outcome.left.c_str()));
    ensure_display(depth, file);
    select_config_file(); // the module may have written the shared file
}

} // namespace

void hand_off(Session& session) {
    if (!goes_on(session))
        return;
    const auto module = static_cast<std::size_t>(session.choice);
    if (module < calls.size()) {
        run_module(module);
        return;
    }
    session.pending_error = format_text("Invalid module parameter!: %d", static_cast<int>(session.choice));
    write_log(session.pending_error);
}

void restore_display() {
    install_display_switching();
    install_close_button();
    if (load_mouse_pointer(path::pointer_folder, path::pointer_file))
        return;
    show_alert("CC: Error loading mousepointer!");
    write_log("Error loading mousepointer!");
    release_pointer();
}

} // namespace vcc
