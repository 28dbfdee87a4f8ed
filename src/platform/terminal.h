// Whether a person reads what a command-line tool writes.
#pragma once

#include <cstdio>

namespace vcc::platform {

/// True when the stream (stdout, stderr) goes to a terminal.
bool is_terminal(std::FILE* stream);

} // namespace vcc::platform
