// What is written where in a source: the parts of the text that an editor shows beside the records.
#pragma once

#include "vcckit/edit/source_edit.h"
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

/// Fails when the text cannot be read. Pure.
Result<Description> describe(const std::string& source, DocumentKind kind, const EditRules& rules);

/// The same for one kind; these throw Refused.
Description describe_screen(const std::string& source, const EditRules& rules);
Description describe_windows(const std::string& text, const EditRules& rules);
Description describe_buffers(const std::string& text, const EditRules& rules);

} // namespace vcc::kit::edit
