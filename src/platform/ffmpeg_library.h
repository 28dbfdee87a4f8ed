// One of FFmpeg's shared libraries, as this system names and loads it.
#pragma once

namespace vcc::platform {

/// Loads a library ("avutil") of a major version; null when it is not there. It stays loaded.
void* load_ffmpeg_library(const char* name, int version);

/// The address of one of its functions, or null.
void* ffmpeg_symbol(void* library, const char* name);

} // namespace vcc::platform
