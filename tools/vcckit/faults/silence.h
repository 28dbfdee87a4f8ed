// Ignoring faults by code or by a comment in a file.
#pragma once

#include "vcckit/faults/report.h"

#include "core/result.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vcc::kit {

/// The codes of `--ignore`: "VK117" or "VK117,VK302". Fails at a word that is no code.
Result<std::set<FaultCode>> codes_of(const std::vector<std::string>& words);

/// A comment "# vcckit: ignore VK117 VK118": at the end of a line it applies to that line, on a line of its own to the
/// next line, and above a TOML heading ("[[slot]]") to everything up to the next heading.
struct Silence {
    int first_line = 0, last_line = 0;
    std::set<FaultCode> codes;
};

/// The comments of a text. A word that is not a code becomes a fault with line and column, but without a file.
std::vector<Silence> silences_of(std::string_view text, Faults& faults);

bool is_silenced(const Fault& fault, const std::vector<Silence>& silences);

} // namespace vcc::kit
