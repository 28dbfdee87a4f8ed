// Owning handles for objects of the graphics library and the C library. Nothing else calls the closing functions.
#pragma once

#include <allegro.h>

#include <cstdio>
#include <memory>

namespace vcc {

/// Releases an object by a function of its library.
template <auto release>
struct Release {
    template <class Object>
    void operator()(Object* object) const noexcept {
        release(object);
    }
};

/// A bitmap that we own; never `screen`, which belongs to the library. Sub-bitmaps must die before their parent.
using BitmapPtr = std::unique_ptr<BITMAP, Release<destroy_bitmap>>;
using SamplePtr = std::unique_ptr<SAMPLE, Release<destroy_sample>>;
using ModeListPtr = std::unique_ptr<GFX_MODE_LIST, Release<destroy_gfx_mode_list>>;
using AudioStreamPtr = std::unique_ptr<AUDIOSTREAM, Release<stop_audio_stream>>;
using FilePtr = std::unique_ptr<std::FILE, Release<std::fclose>>;

} // namespace vcc
