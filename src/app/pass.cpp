#include "app/session.h"

#include "cc/load.h"
#include "cc/screens.h"
#include "cc/sets.h"
#include "core/alert.h"
#include "core/installation.h"
#include "core/log.h"
#include "core/scope.h"
#include "core/version.h"
#include "display/backgrounds.h"
#include "display/buffers.h"
#include "display/pictures_ahead.h"
#include "film/film.h"
#include "media/avi.h"
#include "platform/process.h"
#include "screen/buffer_list.h"
#include "screen/draw.h"
#include "screen/status_line.h"
#include "settings/values.h"
#include "sound/music.h"
#include "sound/sound.h"

#include <allegro.h>

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace vcc {

namespace {

void prepare_pass() {
    if (const int missing = load_backgrounds())
        write_log(format_text("Error initializing display background nr: %d\n", missing));
    position_mouse(layout_width / 2, layout_height / 2);
    set_window_title(format_text("Veldor CC v%s", version_string(version_number).c_str()).c_str());
    module_prefix = "CC ";
}

/// What is told of a part that cannot be loaded.
struct FailureText {
    std::string_view shown; ///< empty: logged only
    const char* logged;
    bool pending; ///< the clean-up logs it again
};
constexpr FailureText no_sound{"", "CC:Sound initialization failed!\n", true},
    no_screens{"CC: Error initializing Graphics\n", "Error initializing Graphics\n", true},
    no_windows{"Error loading transparent Text-Windows!", "Error loading transparent Text-Windows", false},
    no_pictures{"CC: Error loading Graphicbuffers!", "Error loading Graphicbuffers\n", false};

/// Returns false.
bool report(Session& session, const FailureText& failure) {
    if (failure.pending)
        session.pending_error = failure.shown.empty() ? failure.logged : failure.shown;
    if (!failure.shown.empty())
        show_alert(failure.shown);
    write_log(failure.logged);
    return false;
}

void play_films() {
    clear_to_colour(screen, 0);
    settings.volumes[cc_module].effects = read_number("vcc_snd_volume");
    if (sound_on)
        use_effects_volume(Module::control_centre);
    const SwitchSet no_music(music_on, 0);
    pause_music_voice(); // the theme waits for the menu
    // Pictures and film libraries together would be the peak of memory.
    stop_reading_ahead();
    platform::trim_heap();
    for (const Film& film : films)
        play_film(film.path, film.effect);
    read_pictures_ahead(listed_pictures(path::buffer_list));
    platform::release_film_decoder();
    resume_music_voice();
}

/// Loads what the screens need. False if anything but sound failed.
bool load_pass(Session& session) {
    if (!load_sounds())
        report(session, no_sound);
    if (!load_screens())
        return report(session, no_screens);
    if (!std::exchange(session.films_played, true))
        play_films();
    show_next_background();
    if (!load_windows())
        return report(session, no_windows);
    return load_pictures() || report(session, no_pictures);
}

std::optional<Module> run_screens() {
    BITMAP* target = graphic_buffer(screen_buffer);
    place_status_line();
    show_mouse(screen);
    free_backgrounds();
    return run_cc_screens(target);
}

void pass_cleanup(const Session& session) {
    release_sound();
    release_graphic_buffers();
    if (!session.pending_error.empty())
        write_log(session.pending_error);
}

} // namespace

std::optional<Module> run_pass(Session& session) {
    prepare_pass();
    const bool pass_ok = load_pass(session);
    const std::optional<Module> choice = pass_ok ? run_screens() : std::nullopt;
    free_cc_slot_sets();
    pass_cleanup(session);
    show_mouse(nullptr);
    free_backgrounds();                                         // a failed pass has not done so
    choice ? read_pass_pictures_ahead() : stop_reading_ahead(); // while the module runs
    return choice;
}

void read_pass_pictures_ahead() {
    std::vector<std::string> paths(path::backgrounds.begin(), path::backgrounds.end());
    std::ranges::copy(listed_pictures(path::buffer_list), std::back_inserter(paths));
    read_pictures_ahead(paths);
}

} // namespace vcc
