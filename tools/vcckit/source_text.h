// A screen source as plain text, before the TOML reader sees it: that reader takes some characters outside texts for
// impossible, and has no bound for the parts of a key.
#pragma once

#include "report.h"

#include <optional>
#include <string_view>

namespace vcc::kit {

/// The first thing in a source that the TOML reader must not be given: bytes that are no UTF-8, a character outside
/// ASCII that stands neither in a text nor in a comment, a heading without a name, a key of very many parts. Pure.
std::optional<Fault> fault_of_source_text(std::string_view source);

} // namespace vcc::kit
