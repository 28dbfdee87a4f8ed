// A screen source as plain text, before the TOML reader sees it: that reader assumes that some characters never occur
// outside texts, and does not limit the parts of a key.
#pragma once

#include "vcckit/faults/report.h"

#include <optional>
#include <string_view>

namespace vcc::kit {

/// With which a source may begin.
inline constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

/// The first thing in a source that the TOML reader must not see: bytes that are not UTF-8, a character beyond ASCII
/// outside texts and comments, a heading without a name, a key of very many parts. Pure.
std::optional<Fault> fault_of_source_text(std::string_view source);

} // namespace vcc::kit
