// Intro films: playing one, its place on the screen, and its pixels in the formats of the library.
#pragma once

#include "core/handles.h"
#include "media/avi.h"

#include <allegro.h>

#include <string>

namespace vcc {

/// The part of a film that is shown, and its place: centred, or the middle of a film larger than the screen. Pixels.
struct FilmPlace {
    int source_x = 0, source_y = 0, x = 0, y = 0, width = 0, height = 0;
};
FilmPlace place_film(int film_width, int film_height, int screen_width, int screen_height);

/// Converts a frame into a memory bitmap of its size and depth.
void decode_frame(BITMAP* surface, const platform::AviFrame& frame);

/// The colour table of an 8-bit frame in the library's form.
void film_palette(const platform::AviFrame& frame, PALETTE palette);

/// Shows frames centred on a black screen, or the middle of frames larger than the screen.
class FilmScreen {
public:
    /// Blackens the screen. `first` is the film's first frame; all others have its size and depth.
    explicit FilmScreen(const platform::AviFrame& first);

    /// False without a screen or without memory for the pictures; show() must not be called then.
    bool ready() const { return surface_ != nullptr; }

    void show(const platform::AviFrame& frame);

private:
    BitmapPtr picture_, surface_;
    FilmPlace place_;
};

inline constexpr int no_effect = -1;

/// Plays an AVI film centred on the screen, with a sound effect (or no_effect), until it ends or the player presses a
/// key or mouse button. Failures are logged.
void play_film(const std::string& path, int effect);

} // namespace vcc
