// Music themes: whether the end of one runs into its beginning.
#pragma once

#include <string>

namespace vcc::kit {

/// Whether a PCM file is shorter than its header says.
bool is_cut(const std::string& path);

/// Why a theme does not loop; empty if it does. `path` is a PCM file.
std::string loop_fault(const std::string& path);

} // namespace vcc::kit
