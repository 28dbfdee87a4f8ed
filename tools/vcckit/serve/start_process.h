// Programs that go on without us.
#pragma once

#include <string>
#include <vector>

namespace vcc::kit::edit {

/// Starts a program, found by PATH when its name has no slash, in a folder and a session of its own, with nothing on
/// its standard input and output; it outlives this process. Empty, or why it could not be started.
std::string start_process(const std::vector<std::string>& command, const std::string& folder);

} // namespace vcc::kit::edit
