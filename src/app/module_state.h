// What the screens rely on and a module may have changed.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace vcc {

struct ModuleOutcome {
    std::uint8_t result = 0;
    std::string left; ///< what it should have cleaned up, for the log; empty if nothing
};

/// Runs a module and restores the library's and the process's state before its code is unloaded; see docs/modules.md.
/// The display's mode stays as the module left it.
ModuleOutcome run_restoring_state(const std::function<std::uint8_t()>& module);

} // namespace vcc
