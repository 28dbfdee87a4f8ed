// Requests to close the program.
#pragma once

#include <atomic>

namespace vcc {

/// Not 0 once the program has been asked to close; it then leaves as with Alt+X, and no alert holds it up.
inline std::atomic<int> close_requested = 0;

} // namespace vcc
