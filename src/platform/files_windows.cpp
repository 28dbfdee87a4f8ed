#include "platform/files.h"

#include "platform/latin1.h"

#include <windows.h>

namespace vcc::platform {

namespace fs = std::filesystem;

namespace {

/// UTF-8 as the system's UTF-16; empty when it is not UTF-8.
std::wstring wide(std::string_view utf8) {
    const auto convert = [&](wchar_t* target, int room) {
        return MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, utf8.data(), static_cast<int>(utf8.size()), target,
                                   room);
    };
    std::wstring result(static_cast<std::size_t>(convert(nullptr, 0)), L'\0');
    convert(result.data(), static_cast<int>(result.size()));
    return result;
}

} // namespace

fs::path system_path(std::string_view name) {
    std::wstring path = wide(name);
    if (path.empty() && !name.empty())
        path = wide(utf8_from_latin1(name));
    return path;
}

std::string name_of(const fs::path& path) {
    const std::wstring& name = path.native();
    const auto convert = [&](char* target, int room) {
        return WideCharToMultiByte(CP_UTF8, 0, name.data(), static_cast<int>(name.size()), target, room, nullptr,
                                   nullptr);
    };
    std::string result(static_cast<std::size_t>(convert(nullptr, 0)), '\0');
    convert(result.data(), static_cast<int>(result.size()));
    return result;
}

std::FILE* open_file(const std::string& name, const char* mode) {
    return _wfopen(system_path(name).c_str(), wide(mode).c_str());
}

std::string program_path() {
    for (std::wstring name(MAX_PATH, L'\0');; name.resize(2 * name.size()))
        if (const DWORD length = GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
            length < name.size())
            return name_of(name.substr(0, length));
}

FolderVisit::FolderVisit(const std::string& folder) {
    std::error_code error;
    origin_path_ = fs::current_path(error);
    if (!error)
        fs::current_path(system_path(folder), error);
    entered_ = !error;
}

FolderVisit::~FolderVisit() {
    std::error_code ignored;
    if (entered_)
        fs::current_path(origin_path_, ignored);
}

bool replace_file(const std::string& temporary, const std::string& name) {
    const fs::path from = system_path(temporary);
    const fs::path to = system_path(name);
    const HANDLE file = CreateFileW(from.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    const bool written = FlushFileBuffers(file) != 0;
    CloseHandle(file);
    // The first call keeps the rights of the file that it replaces, but needs one.
    return written && (ReplaceFileW(to.c_str(), from.c_str(), nullptr, 0, nullptr, nullptr) != 0 ||
                       MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0);
}

} // namespace vcc::platform
