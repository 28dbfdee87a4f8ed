// The JSON schema of screen sources.
#pragma once

#include <string>

namespace vcc::kit {

/// The schema for TOML editors: what is valid where, with the names for numbers.
std::string screen_schema();

} // namespace vcc::kit
