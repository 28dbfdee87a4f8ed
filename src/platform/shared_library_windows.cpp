#include "platform/shared_library.h"

#include "platform/files.h"

#include <windows.h>

namespace vcc::platform {

namespace {

/// LoadLibrary() without the system's own message about a damaged file.
HMODULE load(const std::string& name) {
    DWORD before = 0;
    SetThreadErrorMode(SEM_FAILCRITICALERRORS, &before);
    const HMODULE library = LoadLibraryW(system_path(name).c_str());
    const DWORD error = GetLastError();
    SetThreadErrorMode(before, nullptr);
    SetLastError(error);
    return library;
}

} // namespace

void SharedLibrary::Closer::operator()(void* handle) const noexcept {
    FreeLibrary(static_cast<HMODULE>(handle));
}

void* SharedLibrary::symbol(const char* name) const {
    return handle_ ? reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle_.get()), name)) : nullptr;
}

SharedLibrary load_module(std::string_view name, std::string& error) {
    const std::string path = ".\\" + module_file_name(name);
    SharedLibrary library(load(path));
    if (!library)
        error = path + ": cannot be loaded (system error " + std::to_string(GetLastError()) + ")";
    return library;
}

std::string module_file_name(std::string_view name) {
    return std::string(name).append(".dll");
}

std::string_view module_file_magic() {
    return "MZ";
}

SharedLibrary load_system_library(const char* name, int version) {
    return SharedLibrary(load(std::string(name) + "-" + std::to_string(version) + ".dll"));
}

} // namespace vcc::platform
