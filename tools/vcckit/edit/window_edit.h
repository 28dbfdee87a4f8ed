// Changes of text-window files: lines of a key and a number. Texts are the file's in UTF-8.
#pragma once

#include "vcckit/edit/operation.h"

#include <string>
#include <string_view>
#include <vector>

namespace vcc::kit::edit {

/// The windows that a text describes, in its order, with the line of the first "+" (1 for window 0 without one); values
/// by field's name, and "title". Pure.
std::vector<NumberedPart> windows_of(std::string_view text);

/// The text with a new window, or with what an operation changes in some; fields are named as in window_fields.h or by
/// their keys. Throws Refused.
std::string change_windows(std::string text, const Operation& operation, const std::string& screen);

} // namespace vcc::kit::edit
