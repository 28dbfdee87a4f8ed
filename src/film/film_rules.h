// What can be computed of a film: its clock, its place on the screen, its pixels in the library's formats.
#pragma once

#include "media/avi.h"

#include <allegro.h>

#include <atomic>
#include <string_view>

namespace vcc {

/// The time of a film. Only the timer calls tick(), only the main thread uses the rest.
struct FilmClock {
    static constexpr int step_ms = 10;

    std::atomic<int> time_ms = 0;
    std::atomic<int> end_ms = 0; ///< time at which the last frame ends
    std::atomic<bool> playing = false;
    std::atomic<bool> restart = false; ///< at the end go back to 0 instead of stopping

    void tick() {
        if (!playing)
            return;
        if (time_ms <= end_ms)
            time_ms += step_ms;
        else if (restart)
            time_ms = 0;
        else
            playing = false;
    }
};

/// Which part of a film is shown, and where: centred, the middle of a film larger than the screen. Pixels.
struct FilmPlace {
    int source_x = 0, source_y = 0, x = 0, y = 0, width = 0, height = 0;
};
FilmPlace place_film(int film_width, int film_height, int screen_width, int screen_height);

/// Converts a frame into a memory bitmap of its size and depth, upright. Ignores a frame of another size or depth.
void decode_frame(BITMAP* surface, const platform::AviFrame& frame);

/// The colour table of an 8-bit frame in the library's form; entries that the frame lacks are black.
void film_palette(const platform::AviFrame& frame, PALETTE palette);

/// The text of an error in the log.
std::string_view film_error_text(platform::AviError error);

} // namespace vcc
