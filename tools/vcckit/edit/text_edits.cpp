#include "vcckit/edit/text_edits.h"

#include "vcckit/edit/operation.h"

#include <algorithm>

namespace vcc::kit::edit {

namespace {

/// The blanks that a line of the table begins with.
std::string_view indentation(std::string_view source, const Node& table) {
    for (auto member = table.members.rbegin(); member != table.members.rend(); ++member)
        if (member->line.end > member->line.begin)
            return source.substr(member->line.begin,
                                 std::min(source.find_first_not_of(" \t", member->line.begin), member->line.end) -
                                     member->line.begin);
    return {};
}

void remove_lines(TextEdits& edits, Span lines) {
    const std::string_view source = edits.source();
    const bool unended = lines.end == source.size() && !source.empty() && source.back() != '\n';
    if (unended && lines.begin > 0) { // the line before loses its end instead
        --lines.begin;
        if (lines.begin > 0 && source[lines.begin - 1] == '\r')
            --lines.begin;
    }
    edits.replace(lines, "");
}

void remove_entry(TextEdits& edits, Span entry) {
    const std::string_view source = edits.source();
    const std::size_t next = std::min(source.find_first_not_of(" \t", entry.end), source.size() - 1);
    const std::size_t last = source.find_last_not_of(" \t", entry.begin - 1);
    if (source[next] == ',')
        entry.end = std::min(source.find_first_not_of(" \t", next + 1), source.size());
    else if (source[last] == ',')
        entry.begin = last;
    edits.replace(entry, "");
}

} // namespace

std::string TextEdits::result_of(const Span& piece) const {
    std::vector<const Edit*> inside;
    for (const Edit& edit : edits_)
        if (edit.span.begin >= piece.begin && edit.span.end <= piece.end)
            inside.push_back(&edit);
    std::ranges::stable_sort(inside, {}, [](const Edit* edit) { return edit->span.begin; });
    std::string out;
    std::size_t at = piece.begin;
    for (const Edit* edit : inside) {
        if (edit->span.begin < at)
            continue; // within what an earlier edit replaces
        out += source_.substr(at, edit->span.begin - at);
        out += edit->text;
        at = edit->span.end;
    }
    return out += source_.substr(at, piece.end - at);
}

std::string_view line_end_of(std::string_view source) {
    const std::size_t end = source.find('\n');
    return end != std::string_view::npos && end > 0 && source[end - 1] == '\r' ? "\r\n" : "\n";
}

void add_lines(TextEdits& edits, std::size_t at, std::string lines) {
    const std::string_view end = line_end_of(edits.source());
    const std::string_view before = edits.source().substr(0, at);
    if (!before.empty() && before.back() != '\n') {
        lines.insert(0, end);
        lines.resize(lines.size() - end.size());
    }
    edits.insert(at, std::move(lines));
}

void add_member(TextEdits& edits, const Node& table, std::string_view key, std::string_view value) {
    const std::string entry = table.prefix + std::string(key) + " = " + std::string(value);
    if (table.form == Node::Form::implied)
        throw Refused("the table has no heading of its own: write one first");
    if (table.on_lines)
        add_lines(edits, table.tail,
                  std::string(indentation(edits.source(), table)) + entry + std::string(line_end_of(edits.source())));
    else if (table.form == Node::Form::braces && table.members.empty())
        edits.replace({table.span.begin + 1, table.span.end - 1}, " " + entry + " ");
    else
        edits.insert(table.tail, ", " + entry);
}

void remove_member(TextEdits& edits, const Member& member) {
    if (member.line.end > member.line.begin) {
        remove_lines(edits, member.line);
    } else if (member.whole.end > member.whole.begin) {
        remove_entry(edits, member.whole);
    } else {
        if (member.value.heading.end > member.value.heading.begin)
            remove_lines(edits, member.value.heading);
        for (const Member& each : member.value.members)
            remove_member(edits, each);
        for (const Node& item : member.value.items)
            for (const Member& each : item.members)
                remove_member(edits, each);
    }
}

} // namespace vcc::kit::edit
