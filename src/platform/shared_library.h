// Libraries loaded at run time: game modules at hand-off, FFmpeg with the first film, Xinerama with the first window.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace vcc::platform {

/// Owns a loaded library. Pointers to its symbols die with it.
class SharedLibrary {
public:
    SharedLibrary() = default;

    /// Takes over a handle of the system; null for none.
    explicit SharedLibrary(void* handle) : handle_(handle) {}

    explicit operator bool() const { return handle_ != nullptr; }

    /// The address of an exported symbol (C linkage), or null.
    void* symbol(const char* name) const;

private:
    struct Closer {
        void operator()(void* handle) const noexcept;
    };
    std::unique_ptr<void, Closer> handle_;
};

/// Loads the game module `name` ("hq" is hq.so on Linux, hq.dll on Windows) from the working folder. Empty after a
/// failure, with the reason in `error`.
SharedLibrary load_module(std::string_view name, std::string& error);

/// The file name that load_module() looks for.
std::string module_file_name(std::string_view name);

/// The first bytes of every library of this system.
std::string_view module_file_magic();

/// Loads a major version of a system library ("avutil"); empty if it is missing.
SharedLibrary load_system_library(const char* name, int version);

} // namespace vcc::platform
