// What the tool tells whoever has started it when it cannot go on.
#pragma once

#include <cstdio>
#include <string>

namespace vcc::kit {

inline constexpr int exit_clean = 0, exit_faults = 1, exit_unusable = 2;

/// "vcckit: reason" on standard error. The exit status that goes with it.
inline int complain(const std::string& reason) {
    std::fprintf(stderr, "vcckit: %s\n", reason.c_str());
    return exit_unusable;
}

} // namespace vcc::kit
