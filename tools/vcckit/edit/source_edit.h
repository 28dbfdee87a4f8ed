// Changes of a document's text that leave everything else in it as it is: comments, order, layout, line ends.
#pragma once

#include "vcckit/edit/operation.h"

#include "core/result.h"

#include <span>
#include <string>

namespace vcc::kit::edit {

/// The text after all operations, one after the other; or why nothing changes. Texts are UTF-8. A source that cannot be
/// read as TOML takes no operation but replace_text. Mistakes that only the screen's reader knows (a text too long, an
/// unknown name) are no reason to refuse. Pure.
Result<std::string> apply(const std::string& source, DocumentKind kind, std::span<const Operation> operations,
                          const EditRules& rules);

/// "Move slot 3", "Change font": what a menu calls an edit.
std::string label_of(std::span<const Operation> operations);

} // namespace vcc::kit::edit
