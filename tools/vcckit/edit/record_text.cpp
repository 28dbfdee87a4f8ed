#include "vcckit/edit/record_text.h"

#include <algorithm>

namespace vcc::kit::edit {

namespace {

bool has_heading(const Node& table) {
    return table.heading.end > table.heading.begin;
}

void collect_pieces(const Node& table, std::vector<Span>& pieces) {
    if (has_heading(table))
        pieces.push_back({table.heading.begin, table.tail});
    for (const Member& member : table.members) {
        if (member.value.is_table())
            collect_pieces(member.value, pieces);
        for (const Node& item : member.value.items)
            if (item.is_table())
                collect_pieces(item, pieces);
    }
}

/// The line that ends before a byte, without its end; `at` is a line's beginning above 0.
std::string_view line_before(std::string_view source, std::size_t at, std::size_t& begin) {
    std::size_t end = at - 1;
    begin = end == 0 ? 0 : source.rfind('\n', end - 1) + 1; // no line end before: npos + 1
    if (end > begin && source[end - 1] == '\r')
        --end;
    return source.substr(begin, end - begin);
}

bool is_blank_line(std::string_view line) {
    return line.find_first_not_of(" \t") == std::string_view::npos;
}

/// A comment, but none that is for tools ("#:schema").
bool is_comment(std::string_view line) {
    const std::size_t first = line.find_first_not_of(" \t");
    return first != std::string_view::npos && line[first] == '#' && !line.substr(first).starts_with("#:");
}

/// Where the comment lines directly above a line begin; the line itself without any.
std::size_t comments_above(std::string_view source, std::size_t line) {
    std::size_t begin = line;
    while (line > 0 && is_comment(line_before(source, line, begin)))
        line = begin;
    return line;
}

} // namespace

std::vector<Span> pieces_of(const Node& table) {
    std::vector<Span> pieces;
    collect_pieces(table, pieces);
    std::ranges::sort(pieces, {}, &Span::begin);
    return pieces;
}

std::vector<Span> joined(std::string_view source, const std::vector<Span>& pieces) {
    std::vector<Span> out;
    for (const Span& piece : pieces) {
        const std::size_t end = out.empty() ? 0 : out.back().end;
        const std::string_view between = source.substr(end, piece.begin - end);
        if (!out.empty() && between.find_first_not_of(" \t\r\n") == std::string_view::npos)
            out.back().end = piece.end;
        else
            out.push_back(piece);
    }
    return out;
}

Span with_surroundings(std::string_view source, const Span& piece) {
    Span out{comments_above(source, piece.begin), piece.end};
    while (out.end < source.size()) {
        const std::size_t end = std::min(source.find('\n', out.end), source.size() - 1) + 1;
        std::string_view line = source.substr(out.end, end - out.end);
        line = line.substr(0, line.find_first_of("\r\n"));
        if (!is_blank_line(line))
            return out;
        out.end = end;
    }
    // The last table: the blank lines before it go instead.
    std::size_t begin = out.begin;
    while (out.begin > 0 && is_blank_line(line_before(source, out.begin, begin)))
        out.begin = begin;
    return out;
}

void add_record(TextEdits& edits, const SourceModel& model, Address::Of kind, int index, const std::string& lines) {
    const std::string_view source = model.source();
    const std::string end(line_end_of(source));
    const Node* before = nullptr;
    const Node* first = nullptr;
    int nearest = -1;
    for (RecordTable record : model.tables(kind)) {
        if (!first && has_heading(*record.table))
            first = record.table;
        for (record.position = 0; record.position < record.count; ++record.position)
            if (record.index() < index && record.index() > nearest && has_heading(*record.table)) {
                nearest = record.index();
                before = record.table;
            }
    }
    if (!before && first)
        edits.insert(comments_above(source, first->heading.begin), lines + end);
    else if (before)
        add_lines(edits, pieces_of(*before).back().end, end + lines);
    else
        add_lines(edits, source.size(), source.empty() ? lines : end + lines);
}

} // namespace vcc::kit::edit
