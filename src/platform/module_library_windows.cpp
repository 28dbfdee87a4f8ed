#include "platform/module_library.h"

#include <windows.h>

namespace vcc::platform {

std::string module_file_name(std::string_view name) {
    return std::string(name).append(".dll");
}

std::string_view module_file_magic() {
    return "MZ";
}

ModuleLibrary ModuleLibrary::load(std::string_view name, std::string& error) {
    ModuleLibrary library;
    const std::string path = ".\\" + module_file_name(name);
    library.handle_ = LoadLibraryA(path.c_str());
    if (library.handle_ == nullptr)
        error = path + ": cannot be loaded (system error " + std::to_string(GetLastError()) + ")";
    return library;
}

ModuleLibrary::~ModuleLibrary() {
    if (handle_ != nullptr)
        FreeLibrary(static_cast<HMODULE>(handle_));
}

void* ModuleLibrary::symbol(const char* name) const {
    return handle_ != nullptr ? reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle_), name)) : nullptr;
}

} // namespace vcc::platform
