// Where the text of a record or style lies, and where that of another one goes.
#pragma once

#include "vcckit/edit/source_model.h"
#include "vcckit/edit/text_edits.h"

#include <string>
#include <vector>

namespace vcc::kit::edit {

/// The headings of a table and of the tables below it, each with its lines, in the order of the text. Empty for a table
/// without a heading.
std::vector<Span> pieces_of(const Node& table);

/// Pieces with nothing but blank lines between them as one.
std::vector<Span> joined(std::string_view source, const std::vector<Span>& pieces);

/// The piece with the comment lines directly above it and the blank lines behind it.
Span with_surroundings(std::string_view source, const Span& piece);

/// Adds a table behind the one with the next lower index of its kind, else before the first one, else at the end.
/// `lines` has no blank lines around it and ends in a line end.
void add_record(TextEdits& edits, const SourceModel& model, Address::Of kind, int index, const std::string& lines);

} // namespace vcc::kit::edit
