#include "app/hq_address.h"

#include "core/log.h"
#include "platform/clipboard.h"

#include <algorithm>

namespace vcc {

bool looks_like_ip_address(std::string_view text) {
    if (text.size() < 7 || text.size() > 15)
        return false;
    return std::ranges::count(text.substr(1, text.size() - 2), '.') == 3;
}

void read_hq_address(std::string& address) {
    constexpr const char* no_address = "N/A";
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
