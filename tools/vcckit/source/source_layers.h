// What the tables of a source say together: styles and what they build on, looks, names for numbers, and values that
// differ by language and repetition. The same for packing, which is told of every mistake, and for editing, which lives
// with them.
#pragma once

#include "vcckit/source/source_tree.h"

#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vcc::kit {

/// A table that says fields, and the style that it is; without a style the record itself.
struct Layer {
    const Node* table = nullptr;
    std::string style;
};
using Layers = std::vector<Layer>;

/// Takes a mistake in what a source says; without `where` it is in the record itself.
using TellMistake = std::function<void(Fault mistake)>;

/// The table [style.NAME]; null without one.
const Node* style_of(const Node& source, std::string_view name);

/// The names under `style`.
std::span<const Node> styles_of(const Node& table);

/// The styles of a table, each after those that it builds on, then the table itself.
Layers layers_of(const Node& source, const Layer& table, const TellMistake& tell);

/// The tables under a key in all layers; `key = false`, or 0, drops those of earlier layers.
Layers looks_of(const Layers& layers, std::string_view key, const TellMistake& tell);

/// The part of a value that holds for a language and a repetition; null if there is none.
const Node* part_of(const Node& value, std::string_view language, int repetition, int count, std::string_view field,
                    const TellMistake& tell);

/// The names that a source adds to the built-in ones: [names.colour] gold = 164
using SourceNames = std::map<std::pair<Meaning, std::string>, std::int32_t>;
SourceNames read_names(const Node& source, const TellMistake& tell);

inline void tell_nobody(const Fault&) {}

} // namespace vcc::kit
