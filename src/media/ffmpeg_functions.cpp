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

std::optional<FfmpegFunctions> load_functions() {
    static const auto* const libraries = new FfmpegLibraries; // never closed, which would only delay the program's end
    FfmpegFunctions functions;
    bool complete = true;
#define VELDOR_FIND(library, function)                                                                                 \
    functions.function = reinterpret_cast<decltype(&::function)>(libraries->library.symbol(#function));                \
    complete = complete && functions.function
    VELDOR_FFMPEG_FUNCTIONS(VELDOR_FIND);
#undef VELDOR_FIND
    return complete ? std::optional(functions) : std::nullopt;
}

} // namespace

const FfmpegFunctions* ffmpeg_functions() {
    static const std::optional<FfmpegFunctions> functions = load_functions();
    return functions ? &*functions : nullptr;
}

} // namespace vcc::platform
