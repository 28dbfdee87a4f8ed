#include "app/session.h"

#include "cc/load.h"
#include "core/clock.h"
#include "core/gamepad.h"
#include "core/log.h"
#include "display/backgrounds.h"
#include "display/graphics_mode.h"
#include "display/pictures_ahead.h"
#include "display/pointer.h"
#include "display/switching.h"
#include "interaction/keys.h"
#include "platform/clipboard.h"
#include "platform/files.h"
#include "platform/process.h"
#include "screen/draw.h"
#include "settings/config_file.h"
#include "settings/keyboard_layout.h"
#include "settings/settings.h"
#include "settings/values.h"
#include "sound/music.h"
#include "text/fonts.h"
#include "x11/display.h"

#include <allegro.h>

#include <algorithm>
#include <cstdio>

namespace vcc {

namespace {

bool start_graphics_library() {
    platform::end_with_display([] { write_log("The display server has gone away"); });
    set_uformat(U_ASCII); // data files and texts are bytes in Latin-1
    if (platform::start_library() == 0) {
        platform::prepare_window();
        return true;
    }
    std::fprintf(stderr, "vcc: no display: %s\n", allegro_error);
    write_log(format_text("No display: %s", allegro_error));
    return false;
}

bool set_graphics_mode() {
    SetupResult result = setup_graphics_mode(use_configured_mode);
    if (result == SetupResult::retry)
        result = setup_graphics_mode(probe_machine);
    return result == SetupResult::ok;
}

/// The HQ's network address: the clipboard's text if the command line asks for it and it looks like one, else "N/A".
std::string read_hq_address(std::span<char* const> arguments) {
    if (arguments.size() < 2 || !std::string_view(arguments[1]).starts_with("/N"))
        return "N/A";
    const std::optional<std::string> text = platform::read_clipboard();
    if (!text)
        write_log("Cannot open the Clipboard");
    return text && looks_like_ip_address(*text) ? *text : "N/A";
}

void install_input() {
    select_config_file();
    start_keyboard();
    watch_keys();
    listen_to_gamepads(read_flag("gamepad"));
    install_mouse_and_pointer();
    install_close_button();
}

} // namespace

bool looks_like_ip_address(std::string_view text) {
    return text.size() >= 7 && text.size() <= 15 && std::ranges::count(text.substr(1, text.size() - 2), '.') == 3;
}

bool start_up(Session& session, std::span<char* const> arguments) {
    platform::prepare_heap();
    if (const std::string folder = platform::folder_of_program(platform::program_path()); !folder.empty())
        platform::enter_folder(folder);
    module_prefix = "CC: ";
    platform::take_termination_requests(request_close);
    read_pass_pictures_ahead();
    if (!start_graphics_library() || !set_graphics_mode())
        return false;
    write_text("battle_hq_ip", read_hq_address(arguments));
    const bool intro_on = read_flag("intro_at_all");
    session.films_played = !intro_on || arguments.size() > 2;
    if (intro_on)
        clear_to_colour(screen, 0);
    else
        show_next_background(); // odd on purpose
    start_tick();
    install_music_feeding();
    seed_random();
    load_language_files();
    install_input();
    return load_fonts(path::fonts);
}

void shut_down() {
    stop_reading_ahead(); // start_up() may have failed before the first pass
    release_fonts();
    release_pointer();
    remember_window();
    flush_settings(); // allegro_exit() would write the rest in place
    allegro_exit();
}

} // namespace vcc
