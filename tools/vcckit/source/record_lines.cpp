#include "vcckit/source/record_lines.h"

#include "vcckit/text/latin1.h"

#include <algorithm>
#include <cstring>

namespace vcc::kit {

namespace {

bool same_field(const Field& field, const Slot& a, const Slot& b) {
    return field.member ? a.*field.member == b.*field.member : bytes_of(a, field) == bytes_of(b, field);
}

/// A text as in a source, or all its bytes if data follow the terminating zero.
std::string text_value(std::string_view bytes) {
    const std::string_view text = bytes.substr(0, bytes.find('\0'));
    if (text.size() < bytes.size() && bytes.find_first_not_of('\0', text.size()) == std::string_view::npos)
        return quoted_latin1(text);
    std::string hex;
    for (const char c : bytes) {
        constexpr const char* digits = "0123456789abcdef";
        hex += digits[static_cast<unsigned char>(c) >> 4];
        hex += digits[static_cast<unsigned char>(c) & 15];
    }
    return "{ raw = \"" + hex + "\" }";
}

} // namespace

Versions everywhere(const Slot& slot) {
    Versions versions;
    versions.fill(slot);
    return versions;
}

bool is_gap(const Versions& versions) {
    const Slot gap = gap_slot();
    return std::ranges::all_of(versions, [&](const Slot& slot) { return std::memcmp(&slot, &gap, sizeof gap) == 0; });
}

std::string text_of(const Lines& lines) {
    std::string text;
    for (const Line& line : lines)
        text += line.key + " = " + line.value + "\n";
    return text;
}

std::string number_text(std::int32_t number, Meaning meaning) {
    const auto name = name_of_number(meaning, number);
    return name ? "\"" + *name + "\"" : std::to_string(number);
}

std::string by_language(const std::array<std::string, languages.size()>& values) {
    if (std::ranges::all_of(values, [&values](const std::string& v) { return v == values[0]; }))
        return values[0];
    Lines lines;
    for (std::size_t i = 0; i < values.size(); ++i)
        lines.push_back({std::string(languages[i].code), values[i]});
    return inline_table(lines);
}

std::string field_text(const Field& field, const Versions& versions) {
    std::array<std::string, languages.size()> values;
    std::ranges::transform(versions, values.begin(), [&field](const Slot& slot) {
        return field.member ? number_text(slot.*field.member, field.meaning) : text_value(bytes_of(slot, field));
    });
    return by_language(values);
}

Lines changes(const Versions& versions, const Versions& base) {
    Lines lines;
    for (const Field& field : record_fields())
        if (!std::ranges::equal(versions, base, std::bind_front(same_field, std::cref(field))))
            lines.push_back({std::string(field.name), field_text(field, versions)});
    return lines;
}

std::string inline_table(const Lines& lines) {
    std::string text = "{";
    for (const Line& line : lines)
        text += (&line == &lines.front() ? " " : ", ") + line.key + " = " + line.value;
    return text + " }";
}

} // namespace vcc::kit
