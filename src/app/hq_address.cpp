#include "app/hq_address.h"

#include "core/log.h"
#include "platform/clipboard.h"

#include <algorithm>

namespace vcc {

namespace {
constexpr const char* no_address = "N/A";
}

bool looks_like_ip_address(std::string_view text) {
    if (text.size() < 7 || text.size() > 15)
        return false;
    const std::string_view inner = text.substr(1, text.size() - 2);
    return std::ranges::count(inner, '.') == 3;
}

bool wants_clipboard_address(std::string_view first_argument) {
    return first_argument.starts_with("/N");
}

void read_hq_address(std::string& address) {
    const platform::ClipboardText clipboard = platform::read_clipboard();
    switch (clipboard.state) {
    case platform::ClipboardState::closed:
        write_log("Cannot open the Clipboard");
        break;
    case platform::ClipboardState::empty:
        break;
    case platform::ClipboardState::locked:
        address = no_address;
        break;
    case platform::ClipboardState::text:
        address = looks_like_ip_address(clipboard.text) ? clipboard.text : no_address;
        break;
    }
}

} // namespace vcc
