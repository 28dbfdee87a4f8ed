// Changes of the buffer list: which picture is in which graphic buffer.
#pragma once

#include "vcckit/edit/operation.h"

#include <string>
#include <string_view>
#include <vector>

namespace vcc::kit::edit {

/// The buffers that a list fills, each with its "picture"; of several pictures the last one, which counts. Pure.
std::vector<NumberedPart> buffers_of(std::string_view text);

/// The list with a new buffer, whose picture is the operation's text, or with what an operation changes in some. Throws
/// Refused.
std::string change_buffers(std::string text, const Operation& operation, const std::string& screen);

} // namespace vcc::kit::edit
