// What is written where in a source: the parts of the text that an editor shows beside the records.
#pragma once

#include "vcckit/edit/source_edit.h"
#include "vcckit/record/names.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vcc::kit::edit {

struct RepeatDescription {
    int first = 0, count = 1, step = 1; ///< index of the group's first record; between indices
    int position = 0;                   ///< of this record in the group, from 0
};

/// A field's name, and who says it: "slot", "toggle" or "style button". Of several the last one, which counts.
using Written = std::map<std::string, std::string>;

/// A record that a [[slot]] or [[toggle]] describes; each repetition by itself.
struct RecordDescription {
    int index = 0;
    int line = 0; ///< of its heading, from 1
    std::vector<std::string> styles;
    std::optional<RepeatDescription> repeat;
    std::string fixed; ///< what the program knows this slot as; empty: its number is free
    Written written;
    std::map<std::string, Written> looks; ///< "highlight", "pressed": those that it has
};

struct StyleDescription {
    std::string name;
    int line = 0;
    std::vector<std::string> styles;           ///< that it builds on
    std::map<std::string, std::string> values; ///< by field, as the text has them
    std::map<std::string, Written> looks;
};

struct WindowDescription {
    int number = 0;
    int line = 0;
    std::string fixed;                         ///< what the program uses it for; empty: its number is free
    std::map<std::string, std::string> values; ///< by field, and "title"; see window_fields()
};

struct Description {
    std::vector<RecordDescription> slots, toggles; ///< in the order of the text
    std::vector<StyleDescription> styles;
    std::vector<WindowDescription> windows;
    std::map<Meaning, std::map<std::string, std::int64_t>> names; ///< that it gives to numbers
};

/// Fails when the text cannot be read as TOML. Pure.
Result<Description> describe(const std::string& source, DocumentKind kind, const EditRules& rules);

} // namespace vcc::kit::edit
