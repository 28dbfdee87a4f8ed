#include "platform/module_library.h"

#include <utility>

namespace vcc::platform {

ModuleLibrary::ModuleLibrary(ModuleLibrary&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}

ModuleLibrary& ModuleLibrary::operator=(ModuleLibrary&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
}

} // namespace vcc::platform
