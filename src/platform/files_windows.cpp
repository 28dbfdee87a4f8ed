#include "platform/files.h"

#include <array>

#include <windows.h>

namespace vcc::platform {

std::string program_path() {
    std::array<char, 260> buffer{};
    const DWORD length = GetModuleFileNameA(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
    return length < buffer.size() ? std::string(buffer.data(), length) : std::string();
}

FolderVisit::FolderVisit(const std::string& folder) {
    std::array<char, 260> buffer{};
    const DWORD length = GetCurrentDirectoryA(static_cast<DWORD>(buffer.size()), buffer.data());
    if (length == 0 || length >= buffer.size())
        return;
    origin_name_.assign(buffer.data(), length);
    entered_ = SetCurrentDirectoryA(folder.c_str()) != 0;
}

FolderVisit::~FolderVisit() {
    if (entered_)
        SetCurrentDirectoryA(origin_name_.c_str());
}

bool replace_file(const std::string& temporary, const std::string& name) {
    const HANDLE file = CreateFileA(temporary.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    const bool written = FlushFileBuffers(file) != 0;
    CloseHandle(file);
    return written &&
           MoveFileExA(temporary.c_str(), name.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

} // namespace vcc::platform
