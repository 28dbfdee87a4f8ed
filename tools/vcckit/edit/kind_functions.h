// What the rows of the kinds of documents are made of: for each a function that changes a text of the kind, and one
// that describes it. Both are pure and throw Refused.
#pragma once

#include "vcckit/edit/document_kinds.h"

#include <string>

namespace vcc::kit::edit {

/// Sources of screens.
std::string change_screen(std::string text, const Operation& operation, const std::string& screen);
Description describe_screen(const std::string& source, const std::string& screen);

/// What change_screen() does to move or resize. Everything addressed moves once, also where several addresses are of
/// one group; languages keep their distance.
std::string move_or_resize(std::string text, const Operation& operation);

/// Text windows: lines of a key and a number. Fields are named as in window_fields.h or by their keys; values have
/// "title", too. The line is that of the first "+", 1 for window 0 without one.
std::string change_windows(std::string text, const Operation& operation, const std::string& screen);
Description describe_windows(const std::string& text, const std::string& screen);

/// The buffer list: which "picture" is in which graphic buffer. That of a new one is the operation's text.
std::string change_buffers(std::string text, const Operation& operation, const std::string& screen);
Description describe_buffers(const std::string& text, const std::string& screen);

/// "protected" of what is described.
inline nlohmann::json text_or_null(const std::string& text) {
    return text.empty() ? nlohmann::json() : nlohmann::json(text);
}

} // namespace vcc::kit::edit
