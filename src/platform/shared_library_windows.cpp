#include "platform/shared_library.h"

#include <windows.h>

namespace vcc::platform {

void SharedLibrary::Closer::operator()(void* handle) const noexcept {
    FreeLibrary(static_cast<HMODULE>(handle));
}

void* SharedLibrary::symbol(const char* name) const {
    return handle_ ? reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle_.get()), name)) : nullptr;
}

SharedLibrary load_module(std::string_view name, std::string& error) {
    const std::string path = ".\\" + module_file_name(name);
    SharedLibrary library(LoadLibraryA(path.c_str()));
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
    return SharedLibrary(LoadLibraryA((std::string(name) + "-" + std::to_string(version) + ".dll").c_str()));
}

} // namespace vcc::platform
