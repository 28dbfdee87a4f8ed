#include "platform/ffmpeg_library.h"

#include <string>

#include <windows.h>

namespace vcc::platform {

void* load_ffmpeg_library(const char* name, int version) {
    return ::LoadLibraryA((std::string(name) + "-" + std::to_string(version) + ".dll").c_str());
}

void* ffmpeg_symbol(void* library, const char* name) {
    return reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(library), name));
}

} // namespace vcc::platform
