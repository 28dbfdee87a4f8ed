// Changes of a source's bytes, collected and made at once; and how members of tables are put in and taken out.
#pragma once

#include "vcckit/source/source_tree.h"

#include <string>
#include <string_view>
#include <vector>

namespace vcc::kit::edit {

/// Replacements of spans. Of two that overlap the one that begins first counts.
class TextEdits {
public:
    explicit TextEdits(std::string_view source) : source_(source) {}

    void replace(const Span& span, std::string text) { edits_.push_back({span, std::move(text)}); }
    void insert(std::size_t at, std::string text) { edits_.push_back({{at, at}, std::move(text)}); }

    /// What is inserted at the same place stays in order.
    std::string result() const { return result_of({0, source_.size()}); }
    /// A piece of the source with the edits that lie in it.
    std::string result_of(const Span& piece) const;

    std::string_view source() const { return source_; }

private:
    struct Edit {
        Span span;
        std::string text;
    };
    std::string_view source_;
    std::vector<Edit> edits_;
};

/// How the lines of a source end: as the first one does.
std::string_view line_end_of(std::string_view source);

/// Adds a member behind the others of a table; refuses one that has no place for it.
void add_member(TextEdits& edits, const Node& table, std::string_view key, std::string_view value);

/// Takes a member out with its line, or with its comma.
void remove_member(TextEdits& edits, const Member& member);

/// Puts lines (each with its end) in at a place where a line begins, or at the end of a source without a last line end,
/// which then has none again.
void add_lines(TextEdits& edits, std::size_t at, std::string lines);

} // namespace vcc::kit::edit
