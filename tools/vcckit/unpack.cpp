#include "unpack.h"

#include "fields.h"
#include "latin1.h"

#include <algorithm>
#include <cstring>
#include <functional>

namespace vcc::kit {

namespace {

/// One record in every language.
using Versions = std::array<Slot, languages.size()>;

Versions everywhere(const Slot& slot) {
    Versions versions;
    versions.fill(slot);
    return versions;
}

bool same(const Versions& a, const Versions& b) {
    return std::equal(a.begin(), a.end(), b.begin(),
                      [](const Slot& x, const Slot& y) { return std::memcmp(&x, &y, sizeof x) == 0; });
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
        return "\"" + to_toml_text(text) + "\"";
    std::string hex;
    for (const char c : bytes) {
        constexpr const char* digits = "0123456789abcdef";
        hex += digits[static_cast<unsigned char>(c) >> 4];
        hex += digits[static_cast<unsigned char>(c) & 15];
    }
    return "{ raw = \"" + hex + "\" }";
}

/// A screen's name has nothing else that a text could not hold.
std::string quoted_name(std::string_view name) {
    std::string text = "\"";
    for (const char c : name)
        text += c == '"' ? "\\\"" : std::string(1, c);
    return text + "\"";
}

/// "field = value", by language where the languages differ.
std::string line_for(std::string_view field, const Versions& versions,
                     const std::function<std::string(const Slot&)>& value) {
    std::array<std::string, languages.size()> values;
    std::transform(versions.begin(), versions.end(), values.begin(), value);
    std::string line = std::string(field) + " = ";
    if (std::all_of(values.begin(), values.end(), [&values](const std::string& v) { return v == values[0]; }))
        return line + values[0] + "\n";
    line += "{";
    for (std::size_t i = 0; i < values.size(); ++i)
        line += (i == 0 ? " " : ", ") + std::string(languages[i].code) + " = " + values[i];
    return line + " }\n";
}

/// The lines for every field that differs from a base.
std::vector<std::string> changes(const Versions& versions, const Versions& base) {
    std::vector<std::string> lines;
    for (const NumberField& field : number_fields()) {
        const auto differs = [&field](const Slot& a, const Slot& b) { return a.*field.member != b.*field.member; };
        if (!std::equal(versions.begin(), versions.end(), base.begin(), std::not_fn(differs)))
            lines.push_back(line_for(field.name, versions, [&field](const Slot& slot) {
                return number_text(slot.*field.member, field.meaning);
            }));
    }
    for (const TextField& field : text_fields()) {
        const auto equal = [&field](const Slot& a, const Slot& b) { return bytes_of(a, field) == bytes_of(b, field); };
        if (!std::equal(versions.begin(), versions.end(), base.begin(), equal))
            lines.push_back(line_for(field.name, versions,
                                     [&field](const Slot& slot) { return field_text(bytes_of(slot, field)); }));
    }
    return lines;
}

using Records = std::vector<Slot> ScreenRecords::*;

Versions record_at(const Screen& screen, Records kind, std::size_t index) {
    Versions versions{};
    for (std::size_t i = 0; i < versions.size(); ++i)
        versions[i] = (screen.records[i].*kind)[index];
    return versions;
}

void write_records(std::string& out, const Screen& screen, Records kind, const char* heading) {
    const std::size_t count = (screen.records[0].*kind).size();
    for (std::size_t index = 0; index < count; ++index) {
        const Versions versions = record_at(screen, kind, index);
        if (same(versions, everywhere(gap_slot())) && index + 1 < count)
            continue;
        std::vector<std::string> lines = changes(versions, everywhere(empty_slot()));
        std::string copy;
        if (kind == &ScreenRecords::toggles && index < screen.records[0].slots.size()) {
            const Versions slot = record_at(screen, &ScreenRecords::slots, index);
            // Gaps are not described, so they cannot be copied.
            std::vector<std::string> shorter = changes(versions, slot);
            if (!same(slot, everywhere(gap_slot())) && shorter.size() < lines.size()) {
                lines = std::move(shorter);
                copy = "copy = " + std::to_string(index) + "\n";
            }
        }
        out += std::string("\n[[") + heading + "]]\nindex = " + std::to_string(index) + "\n" + copy;
        for (const std::string& line : lines)
            out += line;
    }
}

} // namespace

std::string difference_of_structure(const Screen& screen) {
    const ScreenRecords& first = screen.records[0];
    for (const ScreenRecords& other : screen.records) {
        if (other.slots.size() != first.slots.size())
            return "the languages have " + std::to_string(first.slots.size()) + " and " +
                   std::to_string(other.slots.size()) + " slots";
        if (other.toggles.size() != first.toggles.size() || other.has_toggle_file != first.has_toggle_file)
            return "the languages have " + std::to_string(first.toggles.size()) + " and " +
                   std::to_string(other.toggles.size()) + " toggle records, or one has no toggle file";
    }
    return {};
}

std::string write_screen_source(const Screen& screen) {
    std::string out;
    if (!screen.name.empty())
        out += "name = " + quoted_name(screen.name) + "\n";
    const ScreenRecords& first = screen.records[0];
    if (first.has_toggle_file && first.toggles.empty())
        out += "toggle_count = 0\n";
    write_records(out, screen, &ScreenRecords::slots, "slot");
    write_records(out, screen, &ScreenRecords::toggles, "toggle");
    return out;
}

} // namespace vcc::kit
