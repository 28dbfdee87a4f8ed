// The values of a screen source: numbers, names, texts, lists for repeated records, tables by language.
#pragma once

#include "vcckit/record/fields.h"
#include "vcckit/source/alignment.h"
#include "vcckit/source/source_layers.h"

#include <optional>
#include <span>
#include <string>

namespace vcc::kit {

struct Repetition {
    int count = 1;
    int step = 1; ///< between the indices
};

/// A record being built from the source.
struct SourceRecord {
    Slot slot{};
    RecordPlaces places;
    Alignment alignment;
};

/// Reads values for one language, and notes every mistake with the record or style that it is in.
class SourceValues {
public:
    SourceValues(std::string_view language, SourceNames names, Faults& faults)
        : language_(language), names_(std::move(names)), faults_(faults) {}

    std::string where; ///< the record or style being read, for messages
    int repetition_index = 0, repetition_count = 1;

    void fail(Fault mistake);
    void fail(FaultCode code, const Node& node, std::string_view field, std::string problem, std::string advice = {},
              std::string nearest = {}) {
        fail(source_fault(code, node.place, where, field, std::move(problem), std::move(advice), std::move(nearest)));
    }
    TellMistake teller() {
        return [this](Fault mistake) { fail(std::move(mistake)); };
    }

    /// A number, or a name that stands for one.
    std::optional<std::int32_t> integer(const Node& node, Meaning meaning, std::string_view field);

    /// The `repeat` table of a record.
    Repetition repetition(const Node& record);

    /// Sets the fields that a table names; an entry that is neither a field nor among `others` is a mistake.
    void apply(SourceRecord& record, const Node& table, std::span<const std::string_view> others);

    /// Adds what the `repeat` table adds to number fields for each repetition.
    void apply_steps(SourceRecord& record, const Node& table);

private:
    const Node* choose(const Node& node, std::string_view field);
    void fail_name(const Node& node, Meaning meaning, std::string_view field);
    void set(SourceRecord& record, const Field& field, const Node& node);
    void set_text(SourceRecord& record, const Field& field, const Node& node);
    void set_flag(SourceRecord& record, const Field& field, const Node& node);
    void set_align(Alignment& alignment, const Node& node);
    void set_padding(Alignment& alignment, const Field& field, const Node& node);

    std::string_view language_;
    SourceNames names_;
    Faults& faults_;
};

} // namespace vcc::kit
