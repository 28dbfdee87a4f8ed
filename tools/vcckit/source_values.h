// The values of a screen source: numbers, names, texts, lists for repeated records, tables by language.
#pragma once

#include "fields.h"
#include "screen_source.h"

#define TOML_EXCEPTIONS 0
#include <toml++/toml.h>

#include <map>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace vcc::kit {

using SourceNames = std::map<std::pair<Meaning, std::string>, std::int32_t>;

struct Repetition {
    int count = 1;
    int step = 1; ///< between the indices
};

inline int line_of(const toml::node& node) {
    return static_cast<int>(node.source().begin.line);
}

/// Reads values for one language, and notes every mistake with the record that it is in.
class SourceValues {
public:
    SourceValues(std::string_view language, SourceNames names, std::vector<SourceFault>& faults)
        : language_(language), names_(std::move(names)), faults_(faults) {}

    std::string where; ///< the record being built, for messages
    int repetition_index = 0, repetition_count = 1;

    void fail(const toml::node& node, const std::string& text);
    void fail_at(int line, const std::string& text) { faults_.push_back({line, text}); }

    /// A number, or a name that stands for one.
    std::optional<std::int32_t> integer(const toml::node& node, Meaning meaning, std::string_view field);

    /// The `repeat` table of a record.
    Repetition repetition(const toml::table& record);

    /// Sets the fields that a table names; an entry that is neither a field nor among `others` is a mistake.
    void apply(Slot& slot, const toml::table& table, std::span<const std::string_view> others);

    /// Adds what the `repeat` table adds to number fields for each repetition.
    void apply_steps(Slot& slot, const toml::table& record);

private:
    const toml::node* choose(const toml::node& node, std::string_view field);
    void set_text(Slot& slot, const TextField& field, const toml::node& node);
    bool set_flag(Slot& slot, std::string_view key, const toml::node& node);

    std::string_view language_;
    SourceNames names_;
    std::vector<SourceFault>& faults_;
};

} // namespace vcc::kit
