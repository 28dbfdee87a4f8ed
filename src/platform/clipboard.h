#pragma once

#include <string>

namespace vcc::platform {

enum class ClipboardState {
    closed, ///< the clipboard cannot be opened (no display, no answer)
    empty,  ///< it holds no text
    locked, ///< its text cannot be read
    text
};

struct ClipboardText {
    ClipboardState state = ClipboardState::closed;
    std::string text; ///< Latin-1, at most 4096 bytes; only with ClipboardState::text
};

/// Asks the clipboard's owner for its text; waits at most 500 ms.
ClipboardText read_clipboard();

} // namespace vcc::platform
