// Lines that several tables share, moved into styles.
#pragma once

#include "record_lines.h"

#include <string>
#include <vector>

namespace vcc::kit {

/// A table of a source on its way to be written.
struct Entry {
    std::string heading; ///< "[[slot]]"
    std::string kind;    ///< what it shows, a name for its style: "button"
    Lines own;           ///< lines that no style takes: index, repeat
    Lines lines;         ///< fields and looks
    std::vector<std::string> styles;
};

struct Style {
    std::string name;
    Lines lines;
};

/// Takes out of the entries what makes the source shorter as a style. An entry whose value differs keeps its own.
std::vector<Style> find_styles(std::vector<Entry>& entries);

} // namespace vcc::kit
