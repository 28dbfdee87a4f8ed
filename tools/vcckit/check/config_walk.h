// Reads the entries of a configuration file in order and reports faults in its form.
#pragma once

#include "vcckit/faults/report.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vcc::kit {

struct ConfigEntry {
    std::string section; ///< without brackets; empty before the first one
    std::string key;     ///< empty for the line of the section itself
    std::string value;
    int line = 0;
};

/// Calls `take` for every section and every key = value of the text; reports other lines and duplicate keys.
void walk_config(const std::string& file, std::string_view text, Faults& faults,
                 const std::function<void(const ConfigEntry&)>& take);

/// The value as a number; nothing if it is not one, or out of range.
std::optional<int> whole_number(std::string_view value);

} // namespace vcc::kit
