#include "film/film.h"

#include "core/clock.h"
#include "core/log.h"
#include "display/switching.h"
#include "film/film_rules.h"
#include "film/film_screen.h"
#include "platform/avi.h"
#include "platform/files.h"
#include "sound/music.h"
#include "sound/sound.h"

#include <optional>
#include <string>

namespace vcc {
namespace {

constexpr int film_effect_volume = 150;

/// Runs a film's clock for the life of the object.
class ClockTimer {
public:
    explicit ClockTimer(FilmClock& clock)
        : clock_(clock),
          installed_(install_param_int_ex(on_timer, &clock, BPS_TO_TIMER(1000 / FilmClock::step_ms)) == 0) {}
    ~ClockTimer() {
        if (installed_)
            remove_param_int(on_timer, &clock_);
    }
    ClockTimer(const ClockTimer&) = delete;
    ClockTimer& operator=(const ClockTimer&) = delete;

    bool installed() const { return installed_; }

private:
    static void on_timer(void* clock) { static_cast<FilmClock*>(clock)->tick(); }

    FilmClock& clock_;
    bool installed_;
};

/// The effect that sounds with a film. At the film's end it is dropped, heard or not: films play once a run, and
/// their sounds are long.
class FilmSound {
public:
    explicit FilmSound(int effect) : effect_(effect), volume_before_(sfx_volume) {}
    ~FilmSound() {
        if (effect_ == no_effect || !sound_on)
            return;
        drop_effect(effect_);
        sfx_volume = volume_before_;
    }
    FilmSound(const FilmSound&) = delete;
    FilmSound& operator=(const FilmSound&) = delete;

    void start() const {
        if (effect_ == no_effect)
            return;
        current_theme = -1; // no music is fed from here on
        skip_requested();
        if (!sound_on)
            return;
        sfx_volume = film_effect_volume;
        play_effect(effect_);
    }

private:
    int effect_;
    int volume_before_;
};

/// Takes the key or click that ended a film away from the screens that follow.
class InputDiscarded {
public:
    InputDiscarded() = default;
    ~InputDiscarded() {
        clear_keybuf();
        mouse_b = 0;
    }
    InputDiscarded(const InputDiscarded&) = delete;
    InputDiscarded& operator=(const InputDiscarded&) = delete;
};

/// The pointer is drawn into the screen, where a film would tear it.
class PointerHidden {
public:
    PointerHidden() { scare_mouse(); }
    ~PointerHidden() { unscare_mouse(); }
    PointerHidden(const PointerHidden&) = delete;
    PointerHidden& operator=(const PointerHidden&) = delete;
};

bool stop_requested() {
    return skip_requested() != 0 || close_requested != 0;
}

void play(platform::AviFilm& film, FilmScreen& target, FilmClock& clock) {
    const PointerHidden hidden;
    clock.end_ms = film.end_ms();
    clock.time_ms = 0;
    clock.restart = true;
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
            rest(1); // the picture stands
        }
    }
    clock.playing = false;
}

} // namespace

void play_film(const std::string& path, int effect) {
    FilmClock clock;
    const InputDiscarded discarded;
    const FilmSound sound(effect);
    const auto [film, error] = platform::open_avi(platform::resolve_path(path));
    if (!film) {
        write_log(format_text("Error while initializing/loading AVI-File <%s>: %s", path.c_str(),
                              std::string(film_error_text(error)).c_str()));
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
    const ClockTimer timer(clock);
    if (!timer.installed()) {
        write_log(format_text("Error installing the clock for AVI-File:<%s>", path.c_str()));
        return;
    }
    clear_keybuf();
    sound.start();
    play(*film, *target, clock);
}

} // namespace vcc
