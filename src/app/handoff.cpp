#include "app/handoff.h"

#include "core/alert.h"
#include "core/log.h"
#include "core/version.h"
#include "display/graphics_mode.h"
#include "display/pointer.h"
#include "display/switching.h"
#include "platform/shared_library.h"
#include "settings/settings.h"
#include "veldor_module.h"

#include <allegro.h>

#include <algorithm>

namespace vcc {

namespace {

constexpr int leave_choice = 45;

std::uint8_t call_hq(void* entry) {
    return reinterpret_cast<veldor_hq_entry*>(entry)(fullscreen, version_number);
}
std::uint8_t call_battle(void* entry) {
    return reinterpret_cast<veldor_battle_entry*>(entry)(fullscreen, version_number);
}
std::uint8_t call_factory(void* entry) {
    return reinterpret_cast<veldor_factory_entry*>(entry)(mode_range, fullscreen, screen_mode_range,
                                                          settings.bitmap_depth, version_number);
}

struct ModuleRow {
    int choice;
    const char* name; ///< of the library and of its entry
    std::uint8_t (*call)(void* entry);
};
constexpr ModuleRow modules[] = {{0, "hq", call_hq}, {1, "factory", call_factory}, {2, "battle", call_battle}};

void run_module(const ModuleRow& module) {
    std::string error;
    const platform::SharedLibrary library = platform::load_module(module.name, error);
    void* entry = library ? library.symbol(module.name) : nullptr;
    if (library && !entry)
        error = format_text("%s has no entry %s", platform::module_file_name(module.name).c_str(), module.name);
    if (!entry) {
        show_mouse(screen);
        show_alert("CC: Error loading module!", platform::module_file_name(module.name));
        write_log(
            format_text("Error loading module %s: %s", platform::module_file_name(module.name).c_str(), error.c_str()));
        show_mouse(nullptr);
        return;
    }
    fullscreen = module.call(entry);
    select_config_file(); // the module may have written the shared file
}

} // namespace

void hand_off(Session& session) {
    if (!session.pass_ok || session.choice == -1 || session.choice == leave_choice)
        return;
    const auto module = std::ranges::find(modules, session.choice, &ModuleRow::choice);
    if (module != std::end(modules)) {
        run_module(*module);
        return;
    }
    session.pending_error = format_text("Invalid module parameter!: %d", session.choice);
    write_log(session.pending_error);
}

void restore_display() {
    install_display_switching();
    install_close_button();
    if (load_mouse_pointer("images/", "pointer.pcx"))
        return;
    show_alert("CC: Error loading mousepointer!");
    write_log("Error loading mousepointer!");
    release_pointer();
}

} // namespace vcc
