#include "media_functions.h"

#include "platform/shared_library.h"

#include <optional>

namespace vcc::kit {

namespace {

using platform::load_system_library;
using platform::SharedLibrary;

struct Libraries {
    SharedLibrary util = load_system_library("avutil", LIBAVUTIL_VERSION_MAJOR);
    SharedLibrary codec = load_system_library("avcodec", LIBAVCODEC_VERSION_MAJOR);
    SharedLibrary format = load_system_library("avformat", LIBAVFORMAT_VERSION_MAJOR);
    SharedLibrary resample = load_system_library("swresample", LIBSWRESAMPLE_VERSION_MAJOR);
    SharedLibrary scale = load_system_library("swscale", LIBSWSCALE_VERSION_MAJOR);
};

std::optional<MediaFunctions> load_functions() {
    static const auto* const libraries = new Libraries; // never closed
    MediaFunctions functions;
    bool complete = true;
#define VELDOR_FIND(library, function) complete = complete && libraries->library.find(#function, functions.function)
    VELDOR_MEDIA_FUNCTIONS(VELDOR_FIND);
#undef VELDOR_FIND
    if (!complete)
        return std::nullopt;
    functions.av_log_set_level(AV_LOG_QUIET);
    return functions;
}

} // namespace

const MediaFunctions* media_functions() {
    static const std::optional<MediaFunctions> functions = load_functions();
    return functions ? &*functions : nullptr;
}

} // namespace vcc::kit
