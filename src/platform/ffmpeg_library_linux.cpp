#include "platform/ffmpeg_library.h"

#include <string>

#include <dlfcn.h>

namespace vcc::platform {

void* load_ffmpeg_library(const char* name, int version) {
    const std::string file = std::string("lib") + name + ".so." + std::to_string(version);
    return ::dlopen(file.c_str(), RTLD_LAZY | RTLD_LOCAL);
}

void* ffmpeg_symbol(void* library, const char* name) {
    return ::dlsym(library, name);
}

} // namespace vcc::platform
