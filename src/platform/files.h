// File names of an installation, written on any system, and the program's own folder.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

namespace vcc::platform {

/// A name as the system takes it. Linux: the bytes unchanged. Windows: from UTF-8, or from Latin-1 if the bytes are not
/// UTF-8; the C library's functions take neither.
std::filesystem::path system_path(std::string_view name);

/// The name of a path; system_path() turns it back into the path.
std::string name_of(const std::filesystem::path& path);

/// The absolute name, valid in every working folder; the name itself if the working folder is unknown.
std::string whole_name(const std::string& name);

/// fopen() for all names that system_path() takes.
std::FILE* open_file(const std::string& name, const char* mode);

/// The name under which the file can be opened here: backslashes become slashes, and components that do not exist as
/// written are looked up without regard to letter case. Of a file that does not exist, only its folder is looked up; if
/// the folder is missing, too, only slashes are converted.
std::string resolve_path(std::string_view name);

/// Whether a file with the (resolved) name exists.
bool file_exists(std::string_view name);

/// Full path of the running program, empty when unknown.
std::string program_path();

/// The folder part of a program path, by its last backslash, slash or colon: C:\a\b.exe gives C:\a, C:\b.exe gives C:\.
/// Empty if there is no folder part or the last separator is a colon; the working folder then stays. Pure.
std::string folder_of_program(std::string_view path);

/// Changes the working folder; ignores failures.
void enter_folder(const std::string& folder);

/// Changes the working folder for its life. If entered() is false, the folder is unchanged.
class FolderVisit {
public:
    explicit FolderVisit(const std::string& folder);
    ~FolderVisit();
    FolderVisit& operator=(FolderVisit&&) = delete;

    bool entered() const { return entered_; }

private:
    std::intptr_t origin_ = -1;         ///< Linux: the descriptor of the folder to go back to
    std::filesystem::path origin_path_; ///< Windows: its name
    bool entered_ = false;
};

/// Replaces `name` by `temporary` in one step, after its contents have reached the disk. False if that fails, or if
/// `name` is a folder, a device or a pipe; `name` is then unchanged.
bool replace_file(const std::string& temporary, const std::string& name);

} // namespace vcc::platform
