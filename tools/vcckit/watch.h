// Doing something again whenever a file changes.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace vcc::kit {

/// Time of the last change and size of every file below the paths (files or folders), but for logs and half-written
/// files.
using Snapshot = std::map<std::string, std::pair<std::int64_t, std::uintmax_t>>;
Snapshot snapshot_of(const std::vector<std::string>& paths);

/// Runs `work` now, and again after each change of a file, until the process is ended. Looks four times a second.
[[noreturn]] void watch(const std::vector<std::string>& paths, const std::function<void()>& work);

} // namespace vcc::kit
