// Records as the lines of a source.
#pragma once

#include "vcckit/record/fields.h"
#include "vcckit/source/screen_source.h"

#include <array>
#include <string>
#include <vector>

namespace vcc::kit {

/// One record in every language.
using Versions = std::array<Slot, languages.size()>;

Versions everywhere(const Slot& slot);
bool is_gap(const Versions& versions);

/// "dest_x" and "40": a line of a table.
struct Line {
    std::string key, value;
    bool operator==(const Line&) const = default;
};
using Lines = std::vector<Line>;

/// The name of a number, or the number.
std::string number_text(std::int32_t number, Meaning meaning);

/// A value, or a table by language if the languages differ.
std::string by_language(const std::array<std::string, languages.size()>& values);

/// What a field of a record says, so that packing gives the same bytes.
std::string field_text(const Field& field, const Versions& versions);

std::string text_of(const Lines& lines);

/// The lines for every field that differs from a base, or from an empty record.
Lines changes(const Versions& versions, const Versions& base = everywhere(empty_slot()));

/// "{ key = value, key = value }"
std::string inline_table(const Lines& lines);

} // namespace vcc::kit
