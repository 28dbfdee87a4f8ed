// What the command line can do beside packing and unpacking. Every command returns the exit status.
#pragma once

#include "render.h"

#include <string>

namespace vcc::kit {

inline constexpr int exit_clean = 0, exit_faults = 1, exit_unusable = 2;

/// Checks an installation and writes the faults to standard output, as text or as JSON.
int run_check(const std::string& folder, bool json);

/// Renders a screen of an installation into a PNG file.
int run_render(const std::string& folder, const RenderRequest& request, const std::string& output);

/// Prints a file of an installation readably.
int run_show(const std::string& file);

} // namespace vcc::kit
