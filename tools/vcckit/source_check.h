// Checking a screen source: mistakes of the text, and what its records would be told of, at the source's lines.
#pragma once

#include "screen_source.h"

#include <set>
#include <string>
#include <string_view>

namespace vcc::kit {

struct SourceCheck {
    Screen screen;         ///< its name filled in; must not be packed when there are faults
    Faults faults;         ///< by line, each with a file
    bool readable = false; ///< the screen is whole: what there is to tell is about its records
};

struct SourceRules {
    bool any_name = false;       ///< the screen may be one that the program does not read
    bool fonts = false;          ///< the fonts of the installation are loaded
    std::set<FaultCode> ignored; ///< not told
};

/// Checks a source, which lies in `file`. What its records need of other files is for vcckit check to say.
SourceCheck check_source(const std::string& file, std::string_view text, const SourceRules& rules);

} // namespace vcc::kit
