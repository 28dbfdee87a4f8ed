// Libraries that are loaded while the program runs: game modules at hand-off, FFmpeg with the first film, what the
// first window needs to know the monitors.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace vcc::platform {

/// Owns one loaded library; closed by the destructor. Pointers to its symbols die with it.
class SharedLibrary {
public:
    SharedLibrary() = default;

    explicit operator bool() const { return handle_ != nullptr; }

    /// The address of an exported symbol (C linkage), or null.
    void* symbol(const char* name) const;

    /// Sets `function` to an exported function; false, and null, when there is none.
    template <class Function>
    bool find(const char* name, Function*& function) const {
        function = reinterpret_cast<Function*>(symbol(name));
        return function != nullptr;
    }

private:
    friend SharedLibrary load_module(std::string_view name, std::string& error);
    friend SharedLibrary load_system_library(const char* name, int version);

    explicit SharedLibrary(void* handle) : handle_(handle) {}

    struct Closer {
        void operator()(void* handle) const noexcept;
    };
    std::unique_ptr<void, Closer> handle_;
};

/// Loads the game module `name` (without extension: "hq" is hq.so here, hq.dll on Windows) from the working folder.
/// Empty on failure, and `error` says why.
SharedLibrary load_module(std::string_view name, std::string& error);

/// The file name that load_module() looks for.
std::string module_file_name(std::string_view name);

/// What the bytes of every library of this system begin with.
std::string_view module_file_magic();

/// Loads a library that the system has ("avutil") in a major version; empty when it is not there.
SharedLibrary load_system_library(const char* name, int version);

} // namespace vcc::platform
