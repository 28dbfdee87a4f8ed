// The process as the system sees it: what it is told at its start, how it gets its memory, how it is asked to end.
#pragma once

#include <string>
#include <vector>

namespace vcc::platform {

/// Lets the pictures, nearly 2 MB each, come from one heap of large pages that keeps what is freed: the system then has
/// a few pages to hand out at every start and pass instead of ten thousand. Call once, before other threads exist.
void prepare_heap();

/// From now on a request to end from outside (the session ends, somebody presses Ctrl+C, the system shuts down) calls
/// `ask`, once and on a thread of its own, instead of ending the process; a second request ends it at once. Call once,
/// before other threads exist: they inherit that the signals are blocked. Without memory for the thread, requests end
/// the process as before.
void take_termination_requests(void (*ask)());

/// The words of the command line without the program's name; on Windows in UTF-8, as main() does not get them, and a
/// console shows UTF-8 from then on.
std::vector<std::string> command_line(int argc, const char* const* argv);

} // namespace vcc::platform
