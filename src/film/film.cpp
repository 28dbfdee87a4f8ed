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
#include <chrono>
#include <optional>

namespace vcc {
namespace {

constexpr int film_effect_volume = 150;

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

void play(platform::AviFilm& film, FilmScreen& target) {
    using Clock = std::chrono::steady_clock;
    scare_mouse(); // the pointer is drawn into the screen, where the film would overwrite it
    const AtEnd pointer_again(unscare_mouse);
    const auto time_ms = [begin = Clock::now()] {
        return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin).count();
    };
    std::int64_t shown = -1; // number of the frame on the screen
    // A damaged film can turn out to be shorter than it was at the beginning.
    for (auto now = time_ms(); now < film.end_ms() && !stop_requested(); now = time_ms()) {
        const platform::AviFrame* frame = film.frame_at(static_cast<int>(now));
        if (frame && frame->number != shown) {
            target.show(*frame);
            shown = frame->number;
        } else {
            rest(1); // the frame has not changed
        }
    }
}

} // namespace

void play_film(const std::string& path, int effect) {
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
    clear_keybuf();
    forget_mouse_buttons();
    start_sound(effect);
    play(*film, *target);
}

} // namespace vcc
