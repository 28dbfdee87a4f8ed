// The HQ's network address, taken from the clipboard when the command line asks for it.
#pragma once

#include <string>
#include <string_view>

namespace vcc {

/// Seven to fifteen characters with exactly three dots between the first and the last one; nothing else is looked at.
/// Pure.
bool looks_like_ip_address(std::string_view text);

/// Whether the program's first argument asks for the clipboard: it begins with /N.
bool wants_clipboard_address(std::string_view first_argument);

/// Puts the clipboard's address into `address`: the text if it looks like one, else "N/A". A clipboard without a text,
/// or one that cannot be opened (logged), leaves it as it is.
void read_hq_address(std::string& address);

} // namespace vcc
