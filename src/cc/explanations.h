// The paragraphs of the explanation box. They are the program's own and English in every language.
#pragma once

#include "cc/option_rows.h"

#include <span>

namespace vcc {

/// The twelve lines of a row's explanation (also of Row::loop_theme); empty for any other row.
std::span<const std::string_view, explanation_lines> explanation_of(Row row);
bool has_explanation(Row row);

} // namespace vcc
