#include "app/startup.h"

#include "app/hq_address.h"
#include "app/pass.h"
#include "cc/load.h"
#include "core/clock.h"
#include "core/log.h"
#include "display/backgrounds.h"
#include "display/graphics_mode.h"
#include "display/pictures_ahead.h"
#include "display/pointer.h"
#include "display/switching.h"
#include "platform/display.h"
#include "platform/files.h"
#include "platform/process.h"
#include "screen/draw.h"
#include "settings/keyboard_layout.h"
#include "settings/values.h"
#include "sound/music.h"
#include "text/fonts.h"

#include <allegro.h>

#include <cstdio>

namespace vcc {

namespace {

constexpr int tick_ms = 5;

bool prepare_memory(Session&) {
    platform::prepare_heap();
    return true;
}

bool enter_program_folder(Session&) {
    if (const std::string folder = platform::folder_of_program(platform::program_path()); !folder.empty())
        platform::enter_folder(folder);
    module_prefix = "CC: ";
    return true;
}

bool take_termination_requests(Session&) {
    platform::take_termination_requests(request_close);
    return true;
}

bool read_pictures(Session&) {
    read_pass_pictures_ahead();
    return true;
}

bool start_graphics_library(Session&) {
    set_uformat(U_ASCII); // data files and texts are bytes in Latin-1
    if (allegro_init() == 0) {
        platform::keep_pointer_in_picture();
        return true;
    }
    std::fprintf(stderr, "vcc: no display: %s\n", allegro_error);
    write_log(format_text("No display: %s", allegro_error));
    return false;
}

bool set_graphics_mode(Session&) {
    SetupResult result = setup_graphics_mode(use_configured_mode);
    if (result == SetupResult::retry)
        result = setup_graphics_mode(probe_machine);
    return result == SetupResult::ok;
}

bool store_hq_address(Session& session) {
    std::string address = "N/A";
    if (session.arguments.size() > 1 && wants_clipboard_address(session.arguments[1]))
        read_hq_address(address);
    write_text("battle_hq_ip", address);
    return true;
}

bool prepare_screen(Session& session) {
    session.intro_on = read_flag("intro_at_all");
    if (session.intro_on)
        clear_to_colour(screen, 0);
    else
        show_next_background();
    return true;
}

bool start_clock(Session&) {
    install_timer();
    install_int(on_tick, tick_ms);
    install_music_feeding();
    seed_random();
    return true;
}

bool read_language(Session&) {
    load_language_files();
    return true;
}

bool install_input(Session&) {
    select_config_file();
    start_keyboard();
    install_mouse_and_pointer();
    install_close_button();
    return true;
}

bool start_fonts(Session&) {
    return load_font_files();
}

/// The start-up, in order. A step that answers false ends the program.
constexpr bool (*steps[])(Session&) = {
    prepare_memory,   enter_program_folder,   take_termination_requests,
    read_pictures,    start_graphics_library, set_graphics_mode,
    store_hq_address, prepare_screen,         start_clock,
    read_language,    install_input,          start_fonts,
};

} // namespace

bool start_up(Session& session) {
    for (const auto step : steps)
        if (!step(session))
            return false;
    return true;
}

void shut_down() {
    stop_reading_ahead(); // start-up may have ended before the first pass
    release_fonts();
    release_pointer();
    flush_settings(); // the library would write what is left in place
    allegro_exit();
}

std::string version_string(int number) {
    return format_text("%d.%d.%d", number / 100, number % 100 / 10, number % 10);
}

} // namespace vcc
