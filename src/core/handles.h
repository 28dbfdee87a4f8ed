// Owning handles for objects of the graphics library and the C library. Nobody else calls the closing functions.
#pragma once

#include <allegro.h>

#include <cstdio>
#include <memory>

namespace vcc {

struct BitmapDeleter {
    void operator()(BITMAP* bitmap) const noexcept { destroy_bitmap(bitmap); }
};
struct SampleDeleter {
    void operator()(SAMPLE* sample) const noexcept { destroy_sample(sample); }
};
struct PackfileDeleter {
    void operator()(PACKFILE* file) const noexcept { pack_fclose(file); }
};
struct ModeListDeleter {
    void operator()(GFX_MODE_LIST* list) const noexcept { destroy_gfx_mode_list(list); }
};
struct AudioStreamDeleter {
    void operator()(AUDIOSTREAM* stream) const noexcept { stop_audio_stream(stream); }
};
struct FileDeleter {
    void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};

/// A bitmap that we own. `screen` belongs to the library and never goes in here; sub-bitmaps must die before their
/// parent.
using BitmapPtr = std::unique_ptr<BITMAP, BitmapDeleter>;
using SamplePtr = std::unique_ptr<SAMPLE, SampleDeleter>;
using PackfilePtr = std::unique_ptr<PACKFILE, PackfileDeleter>;
using ModeListPtr = std::unique_ptr<GFX_MODE_LIST, ModeListDeleter>;
using AudioStreamPtr = std::unique_ptr<AUDIOSTREAM, AudioStreamDeleter>;
using FilePtr = std::unique_ptr<std::FILE, FileDeleter>;

/// Runs a task when its own life ends.
template <typename Task>
class AtEnd {
public:
    explicit AtEnd(Task task) : task_(task) {}
    ~AtEnd() { task_(); }
    AtEnd(const AtEnd&) = delete;
    AtEnd& operator=(const AtEnd&) = delete;

private:
    Task task_;
};

} // namespace vcc
