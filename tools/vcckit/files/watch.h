// Repeats work whenever a file changes.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace vcc::kit {

/// Time of the last change and size of every file below the paths (files or folders), except logs and half-written
/// files.
using Snapshot = std::map<std::string, std::pair<std::int64_t, std::uintmax_t>>;
Snapshot snapshot_of(const std::vector<std::string>& paths);

/// Runs `work` now and after each change of a file, until the process ends. Checks four times per second.
[[noreturn]] void watch(const std::vector<std::string>& paths, const std::function<void()>& work);

} // namespace vcc::kit
