// The process: its memory, and requests to end it.
#pragma once

namespace vcc::platform {

/// Allocates pictures, nearly 2 MB each, from one heap of large pages that keeps freed memory: the system then provides
/// a few pages at every start and pass instead of ten thousand. Call once, before other threads exist.
void prepare_heap();

/// Gives freed memory back to the system, which the heap otherwise keeps.
void trim_heap();

/// From now on the first request to end (end of session, Ctrl+C, system shutdown) calls `ask` on another thread instead
/// of ending the process; the second ends it at once. Call once, before other threads exist, because they inherit the
/// blocked signals. If the thread cannot be created, requests end the process as before.
void take_termination_requests(void (*ask)());

} // namespace vcc::platform
