// The lines of a text window: one row each, from which checks, editor and page take what a line is called, its range
// and what it is for.
#pragma once

#include "vcckit/record/names.h"

#include "screen/text_window.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace vcc::kit {

struct WindowField {
    std::string_view name; ///< "left"
    std::string_view key;  ///< "xo"; empty: the title, a line without one
    Meaning meaning = Meaning::number;
    std::string_view unit{};
    std::int64_t min = 0, max = 0;
    std::string_view help{};
    std::string_view allowed{}; ///< what is said of a number out of range; empty: no line by itself is wrong
    bool any_below = false;     ///< numbers below the range are possible, too
};

/// In the order in which the program looks for them at the beginning of a line; the title last.
std::span<const WindowField> window_fields();

} // namespace vcc::kit
