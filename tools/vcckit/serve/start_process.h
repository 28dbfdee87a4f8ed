// Programs that go on without us.
#pragma once

#include "core/result.h"

#include <string>
#include <vector>

namespace vcc::kit::edit {

/// Starts a program, found by PATH when its name has no slash, in a folder and a session of its own, with nothing on
/// its standard input and output; it outlives this process. Its number, 0 when it has ended well at once; or why it
/// could not be started, or has ended with a fault at once.
Result<int> start_process(const std::vector<std::string>& command, const std::string& folder);

/// Whether a program that was started has not ended.
bool runs(int process);

} // namespace vcc::kit::edit
