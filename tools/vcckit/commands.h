// What the command line can do beside packing and unpacking. Every command returns the exit status.
#pragma once

#include <string>

namespace vcc::kit {

inline constexpr int exit_clean = 0, exit_faults = 1, exit_unusable = 2;

/// Checks an installation and writes the faults to standard output, as text or as JSON.
int run_check(const std::string& folder, bool json);

} // namespace vcc::kit
