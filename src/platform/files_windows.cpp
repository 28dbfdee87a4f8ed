#include "platform/files.h"

#include "platform/latin1.h"

#include <vector>

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

/// The text that a system function writes; `ask` returns its length, or the room it would need.
template <class Ask>
fs::path long_answer(Ask ask) {
    std::vector<wchar_t> buffer(MAX_PATH);
    for (;;) {
        const DWORD length = ask(buffer.data(), static_cast<DWORD>(buffer.size()));
        if (length < buffer.size())
            return fs::path(std::wstring(buffer.data(), length));
        buffer.resize(buffer.size() * 2);
    }
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
    return name_of(long_answer([](wchar_t* name, DWORD room) { return GetModuleFileNameW(nullptr, name, room); }));
}

FolderVisit::FolderVisit(const std::string& folder)
    : origin_path_(long_answer([](wchar_t* name, DWORD room) { return GetCurrentDirectoryW(room, name); })),
      entered_(!origin_path_.empty() && SetCurrentDirectoryW(system_path(folder).c_str()) != 0) {}

FolderVisit::~FolderVisit() {
    if (entered_)
        SetCurrentDirectoryW(origin_path_.c_str());
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
