#include "platform/clipboard.h"

#include "platform/files.h"
#include "platform/latin1.h"

#include <algorithm>

#include <windows.h>

namespace vcc::platform {

namespace {

constexpr std::size_t text_limit = 4096; ///< characters
constexpr int open_attempts = 10;        ///< another program may have it open for a moment
constexpr DWORD attempt_ms = 50;

bool open_clipboard() {
    for (int attempt = 1; OpenClipboard(nullptr) == 0; ++attempt) {
        if (attempt == open_attempts)
            return false;
        Sleep(attempt_ms);
    }
    return true;
}

std::string read_open_clipboard() {
    const HANDLE data = GetClipboardData(CF_UNICODETEXT); // the system makes it from any kind of text
    if (data == nullptr)
        return {};
    const auto* const text = static_cast<const wchar_t*>(GlobalLock(data));
    if (text == nullptr)
        return {};
    const std::size_t room = std::min(GlobalSize(data) / sizeof *text, text_limit);
    const std::wstring characters(text, std::find(text, text + room, L'\0'));
    GlobalUnlock(data);
    return latin1_from_utf8(name_of(characters));
}

} // namespace

std::optional<std::string> read_clipboard() {
    if (!open_clipboard())
        return {};
    std::string result = read_open_clipboard();
    CloseClipboard();
    return result;
}

} // namespace vcc::platform
