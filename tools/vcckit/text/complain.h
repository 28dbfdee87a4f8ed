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

/// The exit status of a command that has failed for a reason; an empty one: it has not.
inline int exit_of(const std::string& reason) {
    return reason.empty() ? exit_clean : complain(reason);
}

} // namespace vcc::kit
