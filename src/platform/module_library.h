// Loading a game module's library at hand-off.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace vcc::platform {

/// Owns one loaded library; closed by the destructor. Pointers to its symbols die with it.
class ModuleLibrary {
public:
    ModuleLibrary() = default;
    ~ModuleLibrary();
    ModuleLibrary(ModuleLibrary&& other) noexcept;
    ModuleLibrary& operator=(ModuleLibrary&& other) noexcept;
    ModuleLibrary(const ModuleLibrary&) = delete;
    ModuleLibrary& operator=(const ModuleLibrary&) = delete;

    /// Loads the library `name` (without extension: "hq" is hq.so here, hq.dll on Windows) from the working folder. On
    /// failure the object stays empty and `error` says why.
    static ModuleLibrary load(std::string_view name, std::string& error);

    explicit operator bool() const { return handle_ != nullptr; }

    /// The address of an exported symbol (C linkage), or null.
    void* symbol(const char* name) const;

private:
    void* handle_ = nullptr;
};

/// The file name that load() looks for.
std::string module_file_name(std::string_view name);

/// What the bytes of every library of this system begin with.
std::string_view module_file_magic();

} // namespace vcc::platform
