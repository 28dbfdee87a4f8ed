// What the desktop has told the program's window; from any thread.
#pragma once

#include <atomic>

namespace vcc {

/// Not 0 once the program has been asked to close; it then leaves as with Alt+X, and no alert holds it up.
inline std::atomic<int> close_requested = 0;

/// 1 while the player is at another program.
inline std::atomic<int> switched_out = 0;

} // namespace vcc
