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
    using enum platform::ClipboardState;
    const auto [state, content] = platform::read_clipboard();
    if (state == closed)
        write_log("Cannot open the Clipboard");
    else if (state != empty)
        address = state == text && looks_like_ip_address(content) ? content : "N/A";
}

} // namespace vcc
