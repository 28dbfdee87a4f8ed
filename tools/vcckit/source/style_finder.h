// Moves lines that several tables share into styles.
#pragma once

#include "vcckit/source/record_lines.h"

#include <string>
#include <vector>

namespace vcc::kit {

/// A table of a source to be written.
struct Entry {
    std::string heading;             ///< "[[slot]]"
    std::string kind;                ///< what it shows, as a name for its style: "button"
    Lines own;                       ///< lines that no style takes: index, repeat
    Lines lines;                     ///< fields and looks
    std::vector<std::string> styles; ///< in quotes
};

struct Style {
    std::string name;
    Lines lines;
};

/// Moves lines from the entries into styles where that shortens the source. An entry keeps values that differ.
std::vector<Style> find_styles(std::vector<Entry>& entries);

} // namespace vcc::kit
