// Changes of text-window files: lines of a key and a number. Texts are the file's in UTF-8.
#pragma once

#include "vcckit/edit/operation.h"
#include "vcckit/record/names.h"

#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vcc::kit::edit {

struct WindowPart {
    int number = 0;
    int line = 0;                              ///< of the first "+" line, from 1; 1 for window 0 without one
    std::map<std::string, std::string> values; ///< by field's name, and "title"; what later lines say counts
};

/// The windows that a text describes, in its order. Pure.
std::vector<WindowPart> windows_of(std::string_view text);

/// The text with a new window, or with what an operation changes in some; fields are named as in window_fields.h or by
/// their keys. Throws Refused.
std::string change_windows(std::string text, const Operation& operation, const EditRules& rules);

} // namespace vcc::kit::edit
