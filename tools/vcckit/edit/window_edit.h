// Changes of text-window files: lines of a key and a number. Texts are the file's in UTF-8.
#pragma once

#include "edit/operation.h"
#include "names.h"

#include "core/result.h"

#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vcc::kit::edit {

struct WindowField {
    std::string_view name; ///< "left"
    std::string_view key;  ///< "xo"
    Meaning meaning = Meaning::number;
};

/// All but the title, which is a line without a key.
std::span<const WindowField> window_fields();

struct WindowPart {
    int number = 0;
    int line = 0;                              ///< of the first "+" line, from 1; 1 for window 0 without one
    std::map<std::string, std::string> values; ///< by field's name, and "title"; what later lines say counts
};

/// The windows that a text describes, in its order. Pure.
std::vector<WindowPart> windows_of(std::string_view text);

/// What the program uses a window for; empty when its number is free.
std::string role_of_fixed_window(int number);

/// The text after one operation; fields are named as in window_fields() or by their keys. Pure.
Result<std::string> apply_to_windows(const std::string& text, const Operation& operation);

} // namespace vcc::kit::edit
