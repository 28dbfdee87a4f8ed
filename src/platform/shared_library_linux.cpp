#include "platform/shared_library.h"

#include "platform/files.h"

#include <dlfcn.h>

#include <filesystem>

namespace vcc::platform {

namespace {

// Leak reports need the mappings at exit to name functions, so sanitized builds keep libraries mapped.
#ifdef VELDOR_SANITIZED
constexpr int library_flags = RTLD_LOCAL | RTLD_NODELETE;
#else
constexpr int library_flags = RTLD_LOCAL;
#endif

} // namespace

void SharedLibrary::Closer::operator()(void* handle) const noexcept {
    ::dlclose(handle);
}

void* SharedLibrary::symbol(const char* name) const {
    return handle_ ? ::dlsym(handle_.get(), name) : nullptr;
}

SharedLibrary load_module(std::string_view name, std::string& error) {
    // The leading "./" keeps the loader from searching the system's folders.
    const std::string path = resolve_path("./" + module_file_name(name));
    std::error_code ignored;
    if (const auto status = std::filesystem::status(path, ignored);
        std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        error = path + ": is no file"; // the loader would block on a pipe
        return {};
    }
    SharedLibrary library(::dlopen(path.c_str(), RTLD_NOW | library_flags));
    if (!library) {
        const char* const reason = ::dlerror();
        error = reason != nullptr ? reason : path + ": cannot be loaded";
    }
    return library;
}

std::string module_file_name(std::string_view name) {
    return std::string(name).append(".so");
}

std::string_view module_file_magic() {
    return "\x7F"
           "ELF";
}

SharedLibrary load_system_library(const char* name, int version) {
    const std::string file = std::string("lib") + name + ".so." + std::to_string(version);
    return SharedLibrary(::dlopen(file.c_str(), RTLD_LAZY | library_flags));
}

} // namespace vcc::platform
