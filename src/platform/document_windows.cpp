#include "platform/document.h"

#include <cstdint>

#include <windows.h>

#include <shellapi.h>

namespace vcc::platform {

int open_document(const std::string& path) {
    const HINSTANCE result = ShellExecuteA(GetDesktopWindow(), "open", path.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    return static_cast<int>(reinterpret_cast<std::intptr_t>(result));
}

} // namespace vcc::platform
