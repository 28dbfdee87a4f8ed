// The paragraphs of the explanation box.
#pragma once

#include "cc/option_rows.h"

namespace vcc {

/// The twelve lines of a row's explanation (also of Row::loop_theme) as the player reads them; empty for any other row.
/// Valid until texts of the screens are loaded.
Explanation explanation_of(Row row);
bool has_explanation(Row row);

} // namespace vcc
