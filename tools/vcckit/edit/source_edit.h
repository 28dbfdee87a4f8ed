// Changes of a document's text that leave everything else in it as it is: comments, order, layout, line ends.
#pragma once

#include "vcckit/edit/operation.h"

#include <span>
#include <string>

namespace vcc::kit::edit {

/// The text after all operations, one after the other. Throws Refused: nothing changes then. Texts are UTF-8; `screen`
/// says what numbers are fixed. A source that cannot be read as TOML takes no operation but replace_text. Mistakes that
/// only the screen's reader knows (a text too long, an unknown name) are no reason to refuse. Pure.
std::string apply(std::string text, DocumentKind kind, std::span<const Operation> operations,
                  const std::string& screen = {});

/// "Move slot 3", "Change font": what a menu calls an edit.
std::string label_of(std::span<const Operation> operations);

} // namespace vcc::kit::edit
