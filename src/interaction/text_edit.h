// Edits the text of an entry field: from key and text to text and cursor, without drawing.
#pragma once

#include "interaction/keys.h"

#include <string>

namespace vcc {

struct FieldEdit {
    std::string text; ///< padded with blanks to the field's length; the first change cuts a longer one
    int cursor = 0;   ///< 0 to length - 1
};

enum class EditOutcome {
    ignored,   ///< the key does nothing in this field
    changed,   ///< text, cursor or mode may differ: draw the field again
    at_edge,   ///< the cursor cannot move further; nothing to draw
    forbidden, ///< the character is not allowed in a numeric field
    full       ///< the last position was typed over: the entry is finished
};

/// Applies a key of kind character or editing to a field of `length` characters (1 to 254). `numeric` allows digits,
/// blank and "-" only. Insert flips `insert`.
EditOutcome edit_field(FieldEdit& field, const KeyEvent& key, int length, bool numeric, bool editable, int& insert);

} // namespace vcc
