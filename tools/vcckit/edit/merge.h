// Two changes of one text brought together, line by line.
#pragma once

#include "vcckit/source/source_tree.h"

#include <string>
#include <string_view>
#include <vector>

namespace vcc::kit::edit {

/// Lines that both sides changed, differently.
struct MergeConflict {
    Span mine; ///< bytes of the merged text
    std::string base, theirs;
    bool removed = false; ///< the file is gone, and all lines are mine
};

struct Merged {
    std::string text; ///< where the sides disagree, mine
    std::vector<MergeConflict> conflicts;
};

/// Lines next to one another that were replaced one for one do not disturb one another. Pure.
Merged merge(std::string_view base, std::string_view mine, std::string_view theirs);

} // namespace vcc::kit::edit
