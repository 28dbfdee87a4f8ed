#include "platform/files.h"
#include "platform/module_library.h"

#include <dlfcn.h>

namespace vcc::platform {

namespace {

// A leak report names functions by the mappings that exist at exit, so a checked build keeps its modules mapped.
#if defined(__SANITIZE_ADDRESS__)
constexpr int open_flags = RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE;
#else
constexpr int open_flags = RTLD_NOW | RTLD_LOCAL;
#endif

} // namespace

std::string module_file_name(std::string_view name) {
    return std::string(name).append(".so");
}

std::string_view module_file_magic() {
    return "\x7F"
           "ELF";
}

ModuleLibrary ModuleLibrary::load(std::string_view name, std::string& error) {
    ModuleLibrary library;
    // The leading "./" keeps the loader from searching the system's folders.
    const std::string path = resolve_path("./" + module_file_name(name));
    library.handle_ = ::dlopen(path.c_str(), open_flags);
    if (library.handle_ == nullptr) {
        const char* const reason = ::dlerror();
        error = reason != nullptr ? reason : path + ": cannot be loaded";
    }
    return library;
}

ModuleLibrary::~ModuleLibrary() {
    if (handle_ != nullptr)
        ::dlclose(handle_);
}

void* ModuleLibrary::symbol(const char* name) const {
    return handle_ != nullptr ? ::dlsym(handle_, name) : nullptr;
}

} // namespace vcc::platform
