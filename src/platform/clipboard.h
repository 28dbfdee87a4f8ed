#pragma once

#include <optional>
#include <string>

namespace vcc::platform {

/// Asks the clipboard's owner for its text and waits at most 500 ms for it. Returns Latin-1, at most 4096 bytes; empty
/// if there is no text or it cannot be read. Nothing if the clipboard cannot be opened (no display, no answer).
std::optional<std::string> read_clipboard();

} // namespace vcc::platform
