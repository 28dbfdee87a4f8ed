// Writes a screen source as a person would: with looks, repeated records and styles.
#pragma once

#include "vcckit/source/screen_source.h"

#include <string>

namespace vcc::kit {

/// The tables of a source for these records. The caller checks whether it describes every byte.
std::string short_source(const Screen& screen);

} // namespace vcc::kit
