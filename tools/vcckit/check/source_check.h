// Checks a screen source: mistakes in the text, and faults of its records at the lines that describe them.
#pragma once

#include "vcckit/source/screen_source.h"

#include <set>
#include <string>
#include <string_view>

namespace vcc::kit {

struct SourceCheck {
    Screen screen;         ///< its name filled in; must not be packed when there are faults
    Faults faults;         ///< by line, each with a file
    bool readable = false; ///< the screen is complete: all faults are about its records
};

struct SourceRules {
    bool any_name = false;       ///< the screen may be one that the program does not read
    bool fonts = false;          ///< the fonts of the installation are loaded
    std::set<FaultCode> ignored; ///< not reported
};

/// Checks the source in `file`. What its records need from other files is left to vcckit check.
SourceCheck check_source(const std::string& file, std::string_view text, const SourceRules& rules);

} // namespace vcc::kit
