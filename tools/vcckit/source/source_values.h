// The values of a screen source: numbers, names, texts, lists for repeated records, tables by language.
#pragma once

#include "vcckit/faults/report.h"
#include "vcckit/faults/source_place.h"
#include "vcckit/record/fields.h"
#include "vcckit/source/alignment.h"
#include "vcckit/source/screen_source.h"

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

/// A record being built from the source.
struct SourceRecord {
    Slot slot{};
    RecordPlaces places;
    Alignment alignment;
};

Place place_of(const toml::source_region& region);

/// Reads values for one language, and notes every mistake with the record or style that it is in.
class SourceValues {
public:
    SourceValues(std::string_view language, SourceNames names, Faults& faults)
        : language_(language), names_(std::move(names)), faults_(faults) {}

    std::string where; ///< the record or style being read, for messages
    int repetition_index = 0, repetition_count = 1;

    void fail(FaultCode code, const toml::node& node, std::string_view field, std::string problem,
              std::string advice = {}, std::string nearest = {});
    void fail_at(FaultCode code, const Place& place, std::string_view field, std::string problem,
                 std::string advice = {}, std::string nearest = {});

    /// A number, or a name that stands for one.
    std::optional<std::int32_t> integer(const toml::node& node, Meaning meaning, std::string_view field);

    /// The `repeat` table of a record.
    Repetition repetition(const toml::table& record);

    /// Sets the fields that a table names; an entry that is neither a field nor among `others` is a mistake.
    void apply(SourceRecord& record, const toml::table& table, std::span<const std::string_view> others);

    /// Adds what the `repeat` table adds to number fields for each repetition.
    void apply_steps(SourceRecord& record, const toml::table& table);

private:
    const toml::node* choose(const toml::node& node, std::string_view field);
    void fail_name(const toml::node& node, Meaning meaning, std::string_view field, const std::string& name);
    void set_number(SourceRecord& record, const Field& field, const toml::node& node);
    void set_text(SourceRecord& record, const Field& field, const toml::node& node);
    bool set_flag(SourceRecord& record, std::string_view key, const toml::node& node);
    bool set_alignment(Alignment& alignment, std::string_view key, const toml::node& node);

    std::string_view language_;
    SourceNames names_;
    Faults& faults_;
};

} // namespace vcc::kit
