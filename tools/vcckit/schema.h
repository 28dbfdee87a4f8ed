// The JSON schema of screen sources.
#pragma once

#include <string>

namespace vcc::kit {

/// The schema, which editors of TOML take: what may stand where, with the names that stand for numbers.
std::string screen_schema();

} // namespace vcc::kit
