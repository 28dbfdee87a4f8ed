#include "media/ffmpeg_functions.h"

#include "platform/shared_library.h"

#include <optional>

namespace vcc::platform {

namespace {

struct FfmpegLibraries {
    // The versions that this program was built with: others have other structures.
    SharedLibrary util = load_system_library("avutil", LIBAVUTIL_VERSION_MAJOR);
    SharedLibrary codec = load_system_library("avcodec", LIBAVCODEC_VERSION_MAJOR);
    SharedLibrary format = load_system_library("avformat", LIBAVFORMAT_VERSION_MAJOR);
    SharedLibrary scale = load_system_library("swscale", LIBSWSCALE_VERSION_MAJOR);
};

struct LoadedFfmpeg {
    FfmpegLibraries libraries;
    FfmpegFunctions functions;
    bool complete = true;

    LoadedFfmpeg() {
#define VELDOR_FIND(library, function)                                                                                 \
    functions.function = reinterpret_cast<decltype(&::function)>(libraries.library.symbol(#function));                 \
    complete = complete && functions.function
        VELDOR_FFMPEG_FUNCTIONS(VELDOR_FIND);
#undef VELDOR_FIND
    }
};

std::optional<LoadedFfmpeg>& loaded_ffmpeg() {
    static auto* const kept = new std::optional<LoadedFfmpeg>; // closing it would only delay the program's end
    return *kept;
}

} // namespace

const FfmpegFunctions* ffmpeg_functions() {
    std::optional<LoadedFfmpeg>& loaded = loaded_ffmpeg();
    if (!loaded)
        loaded.emplace();
    return loaded->complete ? &loaded->functions : nullptr;
}

void unload_ffmpeg() {
    loaded_ffmpeg().reset();
}

} // namespace vcc::platform
