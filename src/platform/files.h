// File names of an installation, whatever system they were written on, and the program's own place.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

namespace vcc::platform {

/// A name as the system takes it. Linux: the bytes as they are. Windows: UTF-8, which names every file there is, or
/// Latin-1 where the bytes are not UTF-8; the functions of the C library take neither.
std::filesystem::path system_path(std::string_view name);

/// The name of a path: system_path() of it is the path again.
std::string name_of(const std::filesystem::path& path);

/// The name from the root on, which means the same file from every working folder; the name itself when the working
/// folder is unknown.
std::string whole_name(const std::string& name);

/// fopen() for every name that system_path() takes.
std::FILE* open_file(const std::string& name, const char* mode);

/// The name under which the file can be opened here: backslashes become slashes, and a component that does not exist as
/// written is looked up without regard to letter case. A file that is yet to be made gets its folder looked up in the
/// same way; a name whose folder is missing comes back with its slashes converted.
std::string resolve_path(std::string_view name);

/// Whether the (resolved) name is a file that exists.
bool file_exists(std::string_view name);

/// Full path of the running program, empty when unknown.
std::string program_path();

/// The folder that a program path names, by its last backslash, slash or colon: C:\a\b.exe gives C:\a, C:\b.exe gives
/// C:\. Empty when the path has no folder part or its last separator is a colon: the working folder then stays as it
/// is. Pure.
std::string folder_of_program(std::string_view path);

/// Makes a folder the working folder; failure is ignored.
void enter_folder(const std::string& folder);

/// Makes another folder the working folder for the life of the object. When entered() is false the working folder is
/// unchanged.
class FolderVisit {
public:
    explicit FolderVisit(const std::string& folder);
    ~FolderVisit();
    FolderVisit(const FolderVisit&) = delete;
    FolderVisit& operator=(const FolderVisit&) = delete;

    bool entered() const { return entered_; }

private:
    std::intptr_t origin_ = -1;         ///< Linux: the descriptor of the folder to go back to
    std::filesystem::path origin_path_; ///< Windows: its name
    bool entered_ = false;
};

/// Puts `temporary` in the place of `name` in one step, after its contents have reached the disk. False when that
/// failed, or `name` is a folder, a device or a pipe; it is then unchanged.
bool replace_file(const std::string& temporary, const std::string& name);

} // namespace vcc::platform
