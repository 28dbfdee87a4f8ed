#include "vcckit/source/record_lines.h"

#include "vcckit/record/fields.h"
#include "vcckit/text/latin1.h"

#include <algorithm>
#include <cstring>
#include <functional>

namespace vcc::kit {

namespace {

Line line_for(std::string_view field, const Versions& versions, const std::function<std::string(const Slot&)>& value) {
    std::array<std::string, languages.size()> values;
    std::ranges::transform(versions, values.begin(), value);
    return {std::string(field), by_language(values)};
}

} // namespace

Versions everywhere(const Slot& slot) {
    Versions versions;
    versions.fill(slot);
    return versions;
}

Versions record_at(const Screen& screen, RecordSet set, std::size_t index) {
    Versions versions{};
    std::ranges::transform(screen.records, versions.begin(),
                           [&](const auto& records) { return (records.*set)[index]; });
    return versions;
}

bool is_gap(const Versions& versions) {
    return same(versions, everywhere(gap_slot()));
}

std::string text_of(const Lines& lines) {
    std::string text;
    for (const Line& line : lines)
        text += line.key + " = " + line.value + "\n";
    return text;
}

bool same(const Versions& a, const Versions& b) {
    return std::ranges::equal(a, b, [](const Slot& x, const Slot& y) { return std::memcmp(&x, &y, sizeof x) == 0; });
}

std::string number_text(std::int32_t number, Meaning meaning) {
    const auto name = name_of_number(meaning, number);
    return name ? "\"" + *name + "\"" : std::to_string(number);
}

std::string field_text(std::string_view bytes) {
    const std::string_view text = bytes.substr(0, bytes.find('\0'));
    const bool plain =
        text.size() < bytes.size() && bytes.substr(text.size()).find_first_not_of('\0') == std::string_view::npos;
    if (plain)
        return quoted_latin1(text);
    std::string hex;
    for (const char c : bytes) {
        constexpr const char* digits = "0123456789abcdef";
        hex += digits[static_cast<unsigned char>(c) >> 4];
        hex += digits[static_cast<unsigned char>(c) & 15];
    }
    return "{ raw = \"" + hex + "\" }";
}

std::string by_language(const std::array<std::string, languages.size()>& values) {
    if (std::ranges::all_of(values, [&values](const std::string& v) { return v == values[0]; }))
        return values[0];
    std::string text = "{";
    for (std::size_t i = 0; i < values.size(); ++i)
        text += (i == 0 ? " " : ", ") + std::string(languages[i].code) + " = " + values[i];
    return text + " }";
}

Lines changes(const Versions& versions, const Versions& base) {
    Lines lines;
    for (const Field& field : number_fields()) {
        const auto equal = [&field](const Slot& a, const Slot& b) { return a.*field.member == b.*field.member; };
        if (!std::ranges::equal(versions, base, equal))
            lines.push_back(line_for(field.name, versions, [&field](const Slot& slot) {
                return number_text(slot.*field.member, field.meaning);
            }));
    }
    for (const Field& field : text_fields()) {
        const auto equal = [&field](const Slot& a, const Slot& b) { return bytes_of(a, field) == bytes_of(b, field); };
        if (!std::ranges::equal(versions, base, equal))
            lines.push_back(line_for(field.name, versions,
                                     [&field](const Slot& slot) { return field_text(bytes_of(slot, field)); }));
    }
    return lines;
}

std::string inline_table(const Lines& lines) {
    std::string text = "{";
    for (const Line& line : lines)
        text += (&line == &lines.front() ? " " : ", ") + line.key + " = " + line.value;
    return text + " }";
}

} // namespace vcc::kit
