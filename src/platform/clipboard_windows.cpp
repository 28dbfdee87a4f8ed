#include "platform/clipboard.h"

#include <cstring>

#include <windows.h>

namespace vcc::platform {

namespace {

constexpr std::size_t text_limit = 4096;

ClipboardText read_open_clipboard() {
    const HANDLE data = GetClipboardData(CF_TEXT);
    if (data == nullptr)
        return {ClipboardState::empty, {}};
    const auto* const text = static_cast<const char*>(GlobalLock(data));
    if (text == nullptr)
        return {ClipboardState::locked, {}};
    ClipboardText result{ClipboardState::text, std::string(text, strnlen(text, text_limit))};
    GlobalUnlock(data);
    return result;
}

} // namespace

ClipboardText read_clipboard() {
    if (OpenClipboard(nullptr) == 0)
        return {};
    ClipboardText result = read_open_clipboard();
    CloseClipboard();
    return result;
}

} // namespace vcc::platform
