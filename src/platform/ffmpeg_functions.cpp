#include "platform/ffmpeg_functions.h"

#include "platform/ffmpeg_library.h"

#include <optional>

namespace vcc::platform {

namespace {

template <class Function>
bool find(void* library, const char* name, Function*& function) {
    function = reinterpret_cast<Function*>(ffmpeg_symbol(library, name));
    return function != nullptr;
}

// The versions whose headers this program was built with: other ones have other structures.
std::optional<FfmpegFunctions> load_functions() {
    void* const util = load_ffmpeg_library("avutil", LIBAVUTIL_VERSION_MAJOR);
    void* const codec = load_ffmpeg_library("avcodec", LIBAVCODEC_VERSION_MAJOR);
    void* const format = load_ffmpeg_library("avformat", LIBAVFORMAT_VERSION_MAJOR);
    void* const scale = load_ffmpeg_library("swscale", LIBSWSCALE_VERSION_MAJOR);
    if (!util || !codec || !format || !scale)
        return std::nullopt;
    FfmpegFunctions functions;
    bool complete = true;
#define VELDOR_FIND(library, function) complete = find(library, #function, functions.function) && complete
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
