#include "film/film.h"

#include "core/clock.h"
#include "core/gamepad.h"
#include "core/log.h"
#include "core/mouse_buttons.h"
#include "core/scope.h"
#include "core/window_state.h"
#include "film/film_picture.h"
#include "media/avi.h"
#include "platform/files.h"
#include "sound/music.h"
#include "sound/sound.h"

#include <array>
#include <atomic>
#include <optional>
#include <string_view>

namespace vcc {
namespace {

constexpr int film_effect_volume = 150;

/// The time of a film. The timer moves it on; the main thread does the rest.
struct FilmClock {
    static constexpr int step_ms = 10;

    std::atomic<int> time_ms = 0;
    std::atomic<int> end_ms = 0; ///< time at which the last frame ends
    std::atomic<bool> playing = false;
};

const char* error_text(platform::AviError error) {
    constexpr std::array<const char*, 7> texts{"Bad AVI file format!",
                                               "Memory exhausted!",
                                               "File does not exist, or error reading from the file!",
                                               "File does not contain a video stream!",
                                               "Unable to read audio stream format!",
                                               "Unable to read video stream format!",
                                               "Error initializing video decompressor!"};
    static_assert(static_cast<std::size_t>(platform::AviError::other) == texts.size() + 1);
    const std::size_t i = static_cast<std::size_t>(error) - 1; // `none` wraps around
    return i < texts.size() ? texts[i] : "Unknown error code!";
}

void on_timer(void* film_clock) {
    auto& clock = *static_cast<FilmClock*>(film_clock);
    if (clock.playing)
        clock.time_ms = clock.time_ms <= clock.end_ms ? clock.time_ms + FilmClock::step_ms : 0;
}

void start_sound(int effect) {
    if (effect == no_effect)
        return;
    current_theme = -1; // odd on purpose
    skip_requested();
    if (!sound_on)
        return;
    sfx_volume = film_effect_volume;
    play_effect(effect);
}

bool stop_requested() {
    poll_gamepads();
    return skip_requested() != 0 || close_requested != 0;
}

void play(platform::AviFilm& film, FilmScreen& target, FilmClock& clock) {
    scare_mouse(); // the pointer is drawn into the screen, where the film would overwrite it
    const AtEnd pointer_again(unscare_mouse);
    clock.end_ms = film.end_ms();
    clock.time_ms = 0;
    clock.playing = true;
    int last_drawn_ms = 0;
    std::int64_t shown = -1; // number of the frame on the screen
    bool wrapped = false;
    while (clock.playing && clock.time_ms < clock.end_ms && !wrapped && !stop_requested()) {
        const int time_ms = clock.time_ms;
        wrapped = last_drawn_ms > time_ms;
        last_drawn_ms = time_ms;
        const platform::AviFrame* frame = film.frame_at(time_ms);
        clock.end_ms = film.end_ms(); // a damaged film can turn out to be shorter
        if (frame && frame->number != shown) {
            target.show(*frame);
            shown = frame->number;
        } else {
            rest(1); // the frame has not changed
        }
    }
    clock.playing = false;
}

} // namespace

void play_film(const std::string& path, int effect) {
    FilmClock clock;
    const AtEnd input_discarded([] { // the next screen must not get the key or click that ended the film
        clear_keybuf();
        mouse_b = 0;
        forget_mouse_buttons();
    });
    // Even if it was not heard: films play once per run, and their sounds are large.
    const AtEnd sound_dropped([effect, volume_before = sfx_volume] {
        if (effect == no_effect || !sound_on)
            return;
        drop_effect(effect);
        sfx_volume = volume_before;
    });
    const auto [film, error] = platform::open_avi(platform::resolve_path(path));
    if (!film) {
        write_log(format_text("Error while initializing/loading AVI-File <%s>: %s", path.c_str(), error_text(error)));
        return;
    }
    const platform::AviFrame* first = film->frame_at(0);
    std::optional<FilmScreen> target;
    if (first)
        target.emplace(*first);
    if (!target || !target->ready()) {
        write_log(format_text("Error creating video surface for AVI-File:<%s>", path.c_str()));
        return;
    }
    if (install_param_int_ex(on_timer, &clock, BPS_TO_TIMER(1000 / FilmClock::step_ms)) != 0) {
        write_log(format_text("Error installing the clock for AVI-File:<%s>", path.c_str()));
        return;
    }
    const AtEnd clock_stopped([&clock] { remove_param_int(on_timer, &clock); });
    clear_keybuf();
    forget_mouse_buttons();
    start_sound(effect);
    play(*film, *target, clock);
}

} // namespace vcc
