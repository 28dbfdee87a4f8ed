// Shows a film's frames on the screen.
#pragma once

#include "core/handles.h"
#include "film/film_rules.h"
#include "media/avi.h"

#include <allegro.h>

namespace vcc {

/// Shows frames centred on a black screen, or the middle of frames larger than the screen.
class FilmScreen {
public:
    /// Blackens the screen. `first` is the film's first frame; all others have its size and depth.
    explicit FilmScreen(const platform::AviFrame& first);

    /// False without a screen or without memory for the pictures; show() must not be called then.
    bool ready() const { return surface_ != nullptr; }

    void show(const platform::AviFrame& frame);

private:
    void convert(const platform::AviFrame& frame);

    BitmapPtr picture_, surface_; // the surface may be part of the picture
    FilmPlace place_;
    bool in_place_ = false; // frames are decoded directly into the picture
};

} // namespace vcc
