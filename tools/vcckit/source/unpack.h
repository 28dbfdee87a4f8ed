// Screen sources written from slot and toggle files.
#pragma once

#include "vcckit/source/screen_source.h"

#include <string>
#include <string_view>

namespace vcc::kit {

/// A source that describes exactly these records: packing it gives the same bytes. Recovers styles, repeated records
/// and looks. The languages must have equal numbers of slots and of toggle records.
std::string write_screen_source(const Screen& screen);

/// Whether packing a source gives these records.
bool describes(std::string_view source, const Screen& screen, const TextMeasure& measure = {});

/// Why the languages of a screen cannot share a source; empty if they can.
std::string difference_of_structure(const Screen& screen);

} // namespace vcc::kit
