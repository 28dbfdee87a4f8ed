// The HQ's network address, taken from the clipboard if the command line asks for it (/N).
#pragma once

#include <string>
#include <string_view>

namespace vcc {

/// Seven to fifteen characters, exactly three dots between the first and the last; nothing else is checked. Pure.
bool looks_like_ip_address(std::string_view text);

/// Sets `address` to the clipboard's text if that looks like one, else to "N/A". Leaves it unchanged if the clipboard
/// holds no text or cannot be opened (logged).
void read_hq_address(std::string& address);

} // namespace vcc
