// A film's pictures on their way to the screen.
#pragma once

#include "core/handles.h"
#include "film/film_rules.h"
#include "platform/avi.h"

#include <allegro.h>

namespace vcc {

/// Shows frames centred on a black screen; of a film larger than the screen its middle.
class FilmScreen {
public:
    /// Blackens the screen. `first` is the film's first frame: every further one has its size and depth.
    explicit FilmScreen(const platform::AviFrame& first);

    /// False when there is no screen, or no memory for the pictures: show() must not be called then.
    bool ready() const { return surface_ != nullptr; }

    void show(const platform::AviFrame& frame);

private:
    void convert(const platform::AviFrame& frame);

    BitmapPtr picture_, surface_; // the second may be a part of the first
    FilmPlace place_;
    bool in_place_ = false; // frames are decoded straight into the picture
};

} // namespace vcc
