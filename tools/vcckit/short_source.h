// A screen source as a person would write it: with looks, repeated records and styles.
#pragma once

#include "screen_source.h"

#include <string>

namespace vcc::kit {

/// The tables of a source for these records. Whether it describes every byte of them is for the caller to see.
std::string short_source(const Screen& screen);

} // namespace vcc::kit
