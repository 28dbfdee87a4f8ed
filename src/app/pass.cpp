#include "app/pass.h"

#include "cc/screens.h"
#include "core/alert.h"
#include "core/installation.h"
#include "core/layout.h"
#include "core/log.h"
#include "core/version.h"
#include "display/backgrounds.h"
#include "display/buffers.h"
#include "display/pictures_ahead.h"
#include "film/film.h"
#include "screen/buffer_list.h"
#include "screen/draw.h"
#include "screen/draw_slot.h"
#include "screen/status_line.h"
#include "screen/text_window.h"
#include "settings/values.h"
#include "sound/music.h"
#include "sound/sound.h"
#include "text/fonts.h"
#include "text/language.h"

#include <allegro.h>

#include <algorithm>
#include <iterator>
#include <vector>

namespace vcc {

namespace {

constexpr std::size_t pending_limit = 255;

void leave_pending(Session& session, const std::string& message) {
    session.pending_error = message.substr(0, pending_limit);
}

bool begin(Session&) {
    read_pass_pictures_ahead();
    if (const int missing = load_backgrounds())
        write_log(format_text("Error initializing display background nr: %d\n", missing));
    position_mouse(picture_width / 2, picture_height / 2);
    set_window_title(format_text("Veldor CC v%s", version_string(version_number).c_str()).c_str());
    module_prefix = "CC ";
    dot_spacing = 2;
    show_slot_pictures = 1;
    layout_width = picture_width;
    layout_height = picture_height;
    return true;
}

bool set_up_fonts(Session&) {
    configure_fonts();
    select_font(0);
    previous_font = 0;
    return true;
}

bool set_up_sound(Session& session) {
    if (!read_flag("sound_at_all"))
        disable_sound();
    if (!sound_on)
        return true;
    if (read_sound_setup(path::sound_setup) != 0) {
        if (sound_on)
            enable_sound();
        return true;
    }
    leave_pending(session, "CC:Sound initialization failed!\n");
    write_log(session.pending_error);
    return true;
}

bool load_screens(Session& session) {
    if (load_cc_slot_sets() != leave_code)
        return true;
    leave_pending(session, "CC: Error initializing Graphics\n");
    show_alert(session.pending_error);
    write_log("Error initializing Graphics\n");
    return false;
}

bool prepare_screens(Session&) {
    setup_cc_screens();
    return true;
}

bool play_films(Session& session) {
    if (session.arguments.size() > 2 || !session.intro_on || session.films_played)
        return true;
    clear_to_colour(screen, 0);
    settings.volumes[cc_module].effects = read_number("vcc_snd_volume");
    const int music_before = music_on;
    if (sound_on) {
        sfx_volume = settings.volumes[cc_module].effects * volume_step;
        music_on = 0;
    }
    pause_music_voice(); // the theme waits for the menu
    for (const Film& film : films)
        play_film(film.path, film.effect);
    session.films_played = true;
    if (sound_on && music_before)
        music_on = music_before;
    resume_music_voice();
    return true;
}

/// Tells the player of a resource that could not be loaded; the pass has failed.
bool fail(const char* alert, const char* log) {
    show_alert(alert);
    write_log(log);
    return false;
}

bool show_background(Session&) {
    show_next_background();
    return true;
}

bool load_windows(Session&) {
    if (load_text_windows(text_window_prefix + path::text_windows) != 0)
        return true;
    return fail("Error loading transparent Text-Windows!", "Error loading transparent Text-Windows");
}

bool load_buffers(Session&) {
    if (load_graphic_buffers(path::buffer_list) != 0)
        return true;
    return fail("CC: Error loading Graphicbuffers!", "Error loading Graphicbuffers\n");
}

/// The list may name pictures without one for the screens to draw on.
bool have_screen_picture(Session&) {
    BITMAP* picture = graphic_buffer(screen_buffer);
    if (picture && picture->w >= layout_width && picture->h >= layout_height)
        return true;
    return fail("CC: Error loading Graphicbuffers!", "Error loading Graphicbuffers\n");
}

bool run_screens(Session& session) {
    BITMAP* target = graphic_buffer(screen_buffer);
    set_status_target(target);
    place_status_line();
    show_mouse(screen);
    free_backgrounds();
    session.choice = run_cc_screens(target);
    return true;
}

/// A pass, in order. A step that answers false makes the pass fail; the tear-down follows in every case.
constexpr bool (*steps[])(Session&) = {
    begin,           set_up_fonts, set_up_sound, load_screens,        prepare_screens, play_films,
    show_background, load_windows, load_buffers, have_screen_picture, run_screens,
};

} // namespace

void run_pass(Session& session) {
    session.pass_ok = std::ranges::all_of(steps, [&](auto step) { return step(session); });
    set_status_target(nullptr);
    free_cc_slot_sets();
    pass_cleanup(session);
    show_mouse(nullptr);
    free_backgrounds(); // a failed pass has not come to it
    stop_reading_ahead();
}

void read_pass_pictures_ahead() {
    std::vector<std::string> paths = background_paths();
    std::ranges::copy(listed_pictures(path::buffer_list), std::back_inserter(paths));
    read_pictures_ahead(paths);
}

void pass_cleanup(const Session& session) {
    release_sound();
    release_graphic_buffers();
    if (!session.pending_error.empty())
        write_log(session.pending_error);
}

} // namespace vcc
