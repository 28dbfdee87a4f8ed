#include "platform/ffmpeg_functions.h"

#include <optional>
#include <string>

#include <dlfcn.h>

namespace vcc::platform {

namespace {

/// The version whose headers this program was built with: another one has other structures.
void* load(const char* name, int version) {
    return ::dlopen((std::string("lib") + name + ".so." + std::to_string(version)).c_str(), RTLD_LAZY | RTLD_LOCAL);
}

template <class Function>
bool find(void* library, const char* name, Function*& function) {
    function = reinterpret_cast<Function*>(::dlsym(library, name));
    return function != nullptr;
}

std::optional<FfmpegFunctions> load_functions() {
    void* const util = load("avutil", LIBAVUTIL_VERSION_MAJOR);
    void* const codec = load("avcodec", LIBAVCODEC_VERSION_MAJOR);
    void* const format = load("avformat", LIBAVFORMAT_VERSION_MAJOR);
    void* const scale = load("swscale", LIBSWSCALE_VERSION_MAJOR);
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
