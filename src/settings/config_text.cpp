#include "settings/config_text.h"

#include "core/text.h"
#include "platform/latin1.h"

#include <algorithm>

namespace vcc {

using platform::same_but_for_case;

namespace {

std::string_view without_leading_space(std::string_view line) {
    return line.substr(std::min(line.find_first_not_of(white_space), line.size()));
}

bool is_blank_line(std::string_view line) {
    return without_leading_space(line).empty();
}

std::optional<std::string_view> section_of(std::string_view line) {
    const std::string_view rest = without_leading_space(line);
    const std::size_t end = rest.find(']');
    if (!rest.starts_with('[') || end == std::string_view::npos)
        return std::nullopt;
    return rest.substr(1, end - 1);
}

/// The key of a line as the graphics library reads it: up to white space, "=" or "#". Empty for comments.
std::string_view key_of(std::string_view line) {
    const std::string_view rest = without_leading_space(line);
    return rest.substr(0, std::min(rest.find_first_of(white_space), rest.find_first_of("=#")));
}

using Lines = std::vector<std::string>;

/// The lines without their line feeds; a carriage return stays.
Lines lines_of(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

/// What precedes the line feeds: a carriage return if the first line has one.
std::string_view line_end_of(std::string_view text) {
    const std::size_t line_feed = text.find('\n');
    return line_feed != std::string_view::npos && line_feed > 0 && text[line_feed - 1] == '\r' ? "\r" : "";
}

std::string joined(const Lines& lines) {
    std::string text;
    for (const std::string& line : lines)
        text.append(line).append("\n");
    return text;
}

void apply_change(Lines& lines, const ConfigChange& change, std::string_view line_end) {
    const std::string value(change.value.value_or(""), 0, change.value.value_or("").find_first_of("\r\n"));
    const std::string entry = change.key + " = " + value + std::string(line_end);
    bool inside = false;
    std::optional<Lines::difference_type> end_of_section; ///< after its last line that is not blank
    for (auto line = lines.begin(); line != lines.end(); ++line) {
        if (const auto opened = section_of(*line)) {
            inside = same_but_for_case(*opened, change.section);
        } else if (inside && same_but_for_case(key_of(*line), change.key)) {
            if (change.value)
                *line = entry;
            else
                lines.erase(line);
            return;
        }
        if (inside && !is_blank_line(*line))
            end_of_section = line - lines.begin() + 1;
    }
    if (!change.value)
        return;
    if (!end_of_section) {
        if (!lines.empty() && !is_blank_line(lines.back()))
            lines.emplace_back(line_end);
        lines.push_back("[" + change.section + "]" + std::string(line_end));
        end_of_section = std::ssize(lines);
    }
    lines.insert(lines.begin() + *end_of_section, entry);
}

} // namespace

std::vector<ConfigChange> changes_between(const ConfigValues& before, const ConfigValues& after) {
    std::vector<ConfigChange> changes;
    for (const auto& [name, value] : after) {
        const auto old = before.find(name);
        if (old == before.end() || old->second != value)
            changes.push_back({name.first, name.second, value});
    }
    for (const auto& [name, value] : before)
        if (!after.contains(name))
            changes.push_back({name.first, name.second, std::nullopt});
    return changes;
}

std::string with_sections_apart(std::string_view text) {
    const std::string_view line_end = line_end_of(text);
    Lines apart;
    bool inside = false;
    bool has_empty_line = false;
    for (std::string& line : lines_of(text)) {
        if (section_of(line)) {
            if (inside && !has_empty_line)
                apart.emplace_back(line_end);
            inside = true;
            has_empty_line = false;
        }
        has_empty_line = has_empty_line || is_blank_line(line);
        apart.push_back(std::move(line));
    }
    return apart.size() == lines_of(text).size() ? std::string(text) : joined(apart);
}

std::string apply_changes(std::string_view text, std::span<const ConfigChange> changes) {
    if (changes.empty())
        return std::string(text);
    const std::string_view line_end = line_end_of(text);
    Lines lines = lines_of(text);
    for (const ConfigChange& change : changes)
        apply_change(lines, change, line_end);
    return joined(lines);
}

} // namespace vcc
