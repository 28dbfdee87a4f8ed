// Faults that are not to be told: by code, or by a comment in a file.
#pragma once

#include "report.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vcc::kit {

/// Takes the codes of `--ignore`: "VK117" or "VK117,VK302". The first word that is none is returned, else an empty
/// text.
std::string take_codes(const std::vector<std::string>& words, std::set<FaultCode>& codes);

/// A comment "# vcckit: ignore VK117 VK118": at the end of a line it stands for that line, on a line of its own for the
/// line below, and above a heading of TOML ("[[slot]]") for everything up to the next one.
struct Silence {
    int first_line = 0, last_line = 0;
    std::set<FaultCode> codes;
};

/// The comments of a text. A word that is no code becomes a fault with line and column, without a file.
std::vector<Silence> silences_of(std::string_view text, Faults& faults);

bool is_silenced(const Fault& fault, const std::vector<Silence>& silences);

} // namespace vcc::kit
