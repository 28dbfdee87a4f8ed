// Screen sources written from slot and toggle files.
#pragma once

#include "screen_source.h"

#include <string>

namespace vcc::kit {

/// A source that describes exactly these records: packing it gives the same bytes. The languages must have equal
/// numbers of slots and of toggle records.
std::string write_screen_source(const Screen& screen);

/// Why the languages of a screen cannot share one source; empty when they can.
std::string difference_of_structure(const Screen& screen);

} // namespace vcc::kit
