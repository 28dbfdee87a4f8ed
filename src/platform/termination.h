// Requests to end from outside: the session ends, somebody presses Ctrl+C, the system shuts down.
#pragma once

namespace vcc::platform {

/// From now on such a request calls `ask`, once and on a thread of its own, instead of ending the process; a second
/// request ends it at once. Call once, before other threads exist: they inherit that the signals are blocked. Without
/// memory for the thread, requests end the process as before.
void take_termination_requests(void (*ask)());

} // namespace vcc::platform
