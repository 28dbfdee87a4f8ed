// Changes of single fields: where the value stands, which spelling it gets, and what a value shared by languages or
// repetitions becomes when only one of them changes.
#pragma once

#include "vcckit/edit/source_model.h"
#include "vcckit/record/fields.h"

#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace vcc::kit::edit {

/// Whether its values may differ by language and repetition.
bool varies(const Field& field);

/// The text after an operation that sets or unsets a field of one of its addresses. Throws Refused.
std::string change_field(const std::string& text, const Address& address, const Operation& operation);

/// Adds to the written number in the given languages; in a group to what these repetitions have of their own, else to
/// what all have.
void shift_field(Opened& at, std::string_view field, const LanguageSet& in, const std::set<int>& positions,
                 std::int64_t distance);

/// The number that the subject's record has in a field that there is, or the one at another position of its group, with
/// what the group adds. Nothing when it is not to be known.
std::optional<std::int64_t> present_number(const SourceModel& model, const Subject& subject, std::string_view field,
                                           std::size_t language, std::optional<int> position = {});
/// The text that it has, UTF-8.
std::string present_text(const SourceModel& model, const Subject& subject, std::string_view field,
                         std::size_t language);

/// A field in every language at one repetition as the source would write it, without what the group adds.
std::string value_at(const SourceModel& model, const Subject& subject, const Field& field, int position,
                     std::int64_t add);

} // namespace vcc::kit::edit
