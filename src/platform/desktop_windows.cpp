#include "platform/desktop.h"

#include "platform/files.h"

#include <cstdint>

#include <windows.h>

#include <shellapi.h>

namespace vcc::platform {

// The numbers of the results are this function's own.
int open_document(const std::string& path) {
    const HINSTANCE result = ShellExecuteW(GetDesktopWindow(), L"open", system_path(whole_name(path)).c_str(), nullptr,
                                           nullptr, SW_SHOWNORMAL);
    return static_cast<int>(reinterpret_cast<std::intptr_t>(result));
}

bool show_message(const std::string&) {
    return false; // the library's box belongs to the system
}

} // namespace vcc::platform
