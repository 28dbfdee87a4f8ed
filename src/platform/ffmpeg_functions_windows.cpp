#include "platform/ffmpeg_functions.h"

#include <optional>
#include <string>

#include <windows.h>

namespace vcc::platform {

namespace {

HMODULE load(const char* name, int version) {
    return ::LoadLibraryA((std::string(name) + "-" + std::to_string(version) + ".dll").c_str());
}

template <class Function>
bool find(HMODULE library, const char* name, Function*& function) {
    function = reinterpret_cast<Function*>(reinterpret_cast<void*>(::GetProcAddress(library, name)));
    return function != nullptr;
}

std::optional<FfmpegFunctions> load_functions() {
    const HMODULE util = load("avutil", LIBAVUTIL_VERSION_MAJOR);
    const HMODULE codec = load("avcodec", LIBAVCODEC_VERSION_MAJOR);
    const HMODULE format = load("avformat", LIBAVFORMAT_VERSION_MAJOR);
    const HMODULE scale = load("swscale", LIBSWSCALE_VERSION_MAJOR);
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
