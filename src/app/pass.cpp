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
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

namespace vcc {

namespace {

void prepare_pass() {
    read_pass_pictures_ahead();
    if (const int missing = load_backgrounds())
        write_log(format_text("Error initializing display background nr: %d\n", missing));
    position_mouse(layout_width / 2, layout_height / 2);
    set_window_title(format_text("Veldor CC v%s", version_string(version_number).c_str()).c_str());
    module_prefix = "CC ";
}

struct FailureRow {
    LoadFailure failure;
    std::string_view shown; ///< empty: logged only
    const char* logged;
    bool pending; ///< the clean-up logs it again
};
constexpr FailureRow failures[] = {
    {LoadFailure::sound, "", "CC:Sound initialization failed!\n", true},
    {LoadFailure::screens, "CC: Error initializing Graphics\n", "Error initializing Graphics\n", true},
    {LoadFailure::windows, "Error loading transparent Text-Windows!", "Error loading transparent Text-Windows", false},
    {LoadFailure::pictures, "CC: Error loading Graphicbuffers!", "Error loading Graphicbuffers\n", false},
};
static_assert(std::size(failures) == static_cast<std::size_t>(LoadFailure::count));

void report_failure(Session& session, LoadFailure failure) {
    const FailureRow& row = *std::ranges::find(failures, failure, &FailureRow::failure);
    if (row.pending)
        session.pending_error = row.shown.empty() ? row.logged : row.shown;
    if (!row.shown.empty())
        show_alert(row.shown);
    write_log(row.logged);
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

std::optional<Module> run_screens() {
    BITMAP* target = graphic_buffer(screen_buffer);
    set_status_target(target);
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
    std::optional<Module> choice;
    if (load_installation({.failed = [&](LoadFailure failure) { report_failure(session, failure); },
                           .before_pictures =
                               [&] {
                                   if (std::exchange(session.films_due, false))
                                       play_films();
                                   show_next_background();
                               }}))
        choice = run_screens();
    set_status_target(nullptr);
    free_cc_slot_sets();
    pass_cleanup(session);
    show_mouse(nullptr);
    free_backgrounds(); // a failed pass has not done so
    stop_reading_ahead();
    return choice;
}

void read_pass_pictures_ahead() {
    std::vector<std::string> paths(path::backgrounds.begin(), path::backgrounds.end());
    std::ranges::copy(listed_pictures(path::buffer_list), std::back_inserter(paths));
    read_pictures_ahead(paths);
}

} // namespace vcc
