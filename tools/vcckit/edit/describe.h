// What is written where in a source: the parts of the text that an editor shows beside the records.
#pragma once

#include "vcckit/edit/operation.h"
#include "vcckit/source/source_layers.h"

#include <nlohmann/json.hpp>

#include <vector>

namespace vcc::kit::edit {

/// Records and styles are objects as pages get them: line, styles that they build on, and in `written` each field's
/// name with who says it ("slot", "toggle" or "style button"; of several the last one, which counts), in `said` what
/// places a text and is in no record. A style's `written` and `look_written` have the values as the text has them.
struct Description {
    nlohmann::json slots = nlohmann::json::array(), toggles = slots, styles = slots; ///< in the order of the text
    std::vector<NumberedPart> windows, buffers;
    SourceNames names; ///< that it gives to numbers
};

/// Throws Refused for a source that is no TOML. Pure; `screen` says what numbers are fixed.
Description describe_screen(const std::string& source, const std::string& screen);

} // namespace vcc::kit::edit
