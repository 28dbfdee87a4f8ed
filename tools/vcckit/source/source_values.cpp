#include "vcckit/source/source_values.h"

#include "vcckit/text/latin1.h"
#include "vcckit/text/nearest.h"

#include "core/text.h"

#include <algorithm>
#include <charconv>

namespace vcc::kit {

namespace {

using enum FaultCode;

std::optional<std::string> from_hex(std::string_view hex) {
    if (hex.size() % 2 != 0)
        return std::nullopt;
    std::string out;
    for (std::size_t i = 0; i < hex.size(); i += 2) {
        unsigned byte = 0;
        const char* const end = hex.data() + i + 2;
        if (std::from_chars(hex.data() + i, end, byte, 16).ptr != end)
            return std::nullopt;
        out += static_cast<char>(static_cast<unsigned char>(byte));
    }
    return out;
}

std::string in_quotes(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

/// What every table of fields may contain; the rest depends on the table.
bool stands_everywhere(const Field& field) {
    return field.form < FieldForm::plain;
}

std::vector<std::string> known_entries(std::span<const std::string_view> others) {
    std::vector<std::string> known(others.begin(), others.end());
    for (const Field& field : all_fields())
        if (stands_everywhere(field))
            known.emplace_back(field.name);
    return known;
}

void note_place(SourceRecord& record, std::string_view field, const Node& node) {
    if (const auto number = field_number(field))
        record.places.fields[*number] = node.place;
}

} // namespace

void SourceValues::fail(Fault mistake) {
    if (mistake.where.empty())
        mistake.where = where;
    faults_.push_back(std::move(mistake));
}

const Node* SourceValues::choose(const Node& node, std::string_view field) {
    return part_of(node, language_, repetition_index, repetition_count, field, teller());
}

void SourceValues::fail_name(const Node& node, Meaning meaning, std::string_view field) {
    if (!node.text.empty() && node.text.find_first_not_of("+-0123456789") == std::string::npos) {
        fail(wrong_kind, node, field, in_quotes(node.text) + " is a text", "write the number without quotes",
             node.text);
        return;
    }
    std::vector<std::string> known = names_of(meaning);
    for (const auto& [key, number] : names_)
        if (key.first == meaning)
            known.push_back(key.second);
    fail(unknown_name, node, field, "unknown " + std::string(meaning_word(meaning)) + " " + in_quotes(node.text),
         permitted_values(meaning), nearest_word(node.text, known));
}

std::optional<std::int32_t> SourceValues::integer(const Node& node, Meaning meaning, std::string_view field) {
    const Node* const chosen = choose(node, field);
    if (!chosen)
        return std::nullopt;
    if (chosen->is_number() && chosen->number >= INT32_MIN && chosen->number <= INT32_MAX)
        return static_cast<std::int32_t>(chosen->number);
    if (chosen->is_number())
        fail(out_of_range, *chosen, field, std::to_string(chosen->number) + " does not fit in 32 bits");
    else if (!chosen->is_text())
        fail(wrong_kind, *chosen, field, "must be a number or a name", permitted_values(meaning));
    else if (const auto own = names_.find({meaning, chosen->text}); own != names_.end())
        return own->second;
    else if (const auto known = number_of_name(meaning, chosen->text))
        return known;
    else
        fail_name(*chosen, meaning, field);
    return std::nullopt;
}

Repetition SourceValues::repetition(const Node& record) {
    Repetition out;
    const Node* const node = record.find("repeat");
    if (!node)
        return out;
    const Node* const count = node->find("count");
    if (!count) {
        fail(bad_repeat, *node, "repeat", "must be a table with a count", "repeat = { count = 3, dest_y = 26 }");
        return out;
    }
    out.count = integer(*count, Meaning::number, "repeat.count").value_or(1);
    if (out.count < 1 || out.count > slot_limit) {
        fail(bad_repeat, *count, "repeat.count", "must be 1 to " + std::to_string(slot_limit));
        out.count = 1;
    }
    if (const Node* const step = node->find("step"))
        out.step = std::clamp(integer(*step, Meaning::number, "repeat.step").value_or(1), -slot_limit, slot_limit);
    return out;
}

void SourceValues::apply_steps(SourceRecord& record, const Node& table) {
    const Node* const steps = table.table("repeat");
    if (!steps)
        return;
    for (const Member& step : steps->members) {
        if (step.key == "count" || step.key == "step")
            continue;
        const Field* const field = find_number_field(step.key);
        if (!field) {
            std::vector<std::string> known{"count", "step"};
            for (const Field& each : number_fields())
                known.emplace_back(each.name);
            fail(source_fault(unknown_entry, step.place, where, "repeat", in_quotes(step.key) + " is no number field",
                              "", nearest_word(step.key, known)));
            continue;
        }
        const auto added = integer(step.value, Meaning::number, field->name);
        const std::int64_t value = record.slot.*field->member + std::int64_t{added.value_or(0)} * repetition_index;
        if (value < INT32_MIN || value > INT32_MAX) {
            fail(out_of_range, step.value, field->name, "does not fit in 32 bits");
        } else {
            record.slot.*field->member = static_cast<std::int32_t>(value);
            note_place(record, field->name, step.value);
        }
    }
}

void SourceValues::set_text(SourceRecord& record, const Field& field, const Node& node) {
    const std::span<char> bytes = bytes_of(record.slot, field);
    note_place(record, field.name, node);
    if (node.is_table()) {
        // The bytes of the whole field, for records with something behind a text's end.
        const Node* const hex = node.find("raw");
        const auto raw = hex && hex->is_text() ? from_hex(hex->text) : std::nullopt;
        if (!raw || raw->size() != bytes.size() || node.members.size() != 1)
            fail(bad_raw, node, field.name,
                 "raw must be " + std::to_string(bytes.size()) + " bytes, two hexadecimal digits each");
        else
            std::ranges::copy(*raw, bytes.begin());
        return;
    }
    const auto text = to_latin1(node.text);
    if (!node.is_text())
        fail(wrong_kind, node, field.name, "must be a text", "put it in quotes");
    else if (!text || text->find('\0') != std::string::npos)
        fail(not_latin1, node, field.name, "has a character outside Windows Latin-1",
             "texts reach the program as bytes of Windows Latin-1");
    else if (text->size() >= bytes.size())
        fail(text_too_long, node, field.name,
             "is " + std::to_string(text->size()) + " characters long, " + std::to_string(bytes.size() - 1) + " fit",
             "shorten it");
    else
        std::fill(std::copy(text->begin(), text->end(), bytes.begin()), bytes.end(), '\0');
}

void SourceValues::set_flag(SourceRecord& record, const Field& field, const Node& node) {
    const bool on = node.kind != Node::Kind::flag || node.flag;
    if (node.kind != Node::Kind::flag && field.form == FieldForm::flag)
        fail(wrong_kind, node, field.name, "must be true or false");
    else if (node.kind != Node::Kind::flag)
        if (const auto colour = integer(node, Meaning::colour, field.name)) {
            store_text(record.slot.sound_flags, std::to_string(*colour));
            note_place(record, "sound_flags", node);
        }
    note_place(record, "draw_flags", node);
    // The letters count by position; a zero before one would end the text.
    auto& letters = record.slot.draw_flags;
    char& letter = letters[field.position];
    if (on) {
        std::replace(letters, letters + field.position, '\0', ' ');
        letter = field.letter;
    } else if (letter == field.letter) {
        letter = ' ';
    }
}

void SourceValues::set_align(Alignment& alignment, const Node& node) {
    constexpr std::pair<std::string_view, Align> words[] = {
        {"left", Align::left}, {"centre", Align::centre}, {"center", Align::centre}, {"right", Align::right}};
    const Node* const chosen = choose(node, "align");
    if (!chosen)
        return;
    for (const auto& [name, meaning] : words)
        if (chosen->is_text() && chosen->text == name) {
            alignment.align = meaning;
            alignment.place = node.place;
            return;
        }
    fail(unknown_name, *chosen, "align",
         chosen->is_text() ? "unknown word " + in_quotes(chosen->text) : "must be a word", "left, centre or right",
         nearest_word(chosen->text, std::vector<std::string>{"left", "centre", "right"}));
}

void SourceValues::set_padding(Alignment& alignment, const Field& field, const Node& node) {
    constexpr const char* forms = "one number, or [x, y] for each direction";
    alignment.place = node.place;
    const auto pixels = [&](const Node& at) {
        if (!at.is_number() || at.number < field.min || at.number > field.max)
            fail(at.is_number() ? out_of_range : wrong_kind, at, field.name, "must be " + range_of(field), forms);
        return static_cast<int>(std::clamp(at.number, field.min, field.max));
    };
    const bool pair = node.kind == Node::Kind::list;
    if (pair && node.items.size() != 2) {
        fail(wrong_kind, node, field.name, "must be one number or two", forms);
        return;
    }
    alignment.padding_x = pixels(pair ? node.items[0] : node);
    alignment.padding_y = pixels(pair ? node.items[1] : node);
}

void SourceValues::set(SourceRecord& record, const Field& field, const Node& node) {
    switch (field.form) {
    case FieldForm::number:
        if (const auto value = integer(node, field.meaning, field.name)) {
            record.slot.*field.member = *value;
            note_place(record, field.name, *choose(node, field.name));
        }
        break;
    case FieldForm::text:
        if (const Node* const chosen = choose(node, field.name))
            set_text(record, field, *chosen);
        break;
    case FieldForm::flag:
    case FieldForm::shadow:
        set_flag(record, field, node);
        break;
    case FieldForm::word:
        set_align(record.alignment, node);
        break;
    case FieldForm::pair:
        set_padding(record.alignment, field, node);
        break;
    case FieldForm::plain:
    case FieldForm::styles:
    case FieldForm::look:
        break;
    }
}

void SourceValues::apply(SourceRecord& record, const Node& table, std::span<const std::string_view> others) {
    // In the order of the fields: the readable flags change what draw_flags and sound_flags of the same table say.
    for (const Field& field : all_fields())
        if (const Node* const node = stands_everywhere(field) ? table.find(field.name) : nullptr)
            set(record, field, *node);
    for (const Member& member : table.members) {
        const Field* const field = find_field(member.key);
        if ((field && stands_everywhere(*field)) || std::ranges::find(others, member.key) != others.end())
            continue;
        fail(source_fault(unknown_entry, member.place, where, "", "unknown field " + in_quotes(member.key), "",
                          nearest_word(member.key, known_entries(others))));
    }
}

} // namespace vcc::kit
