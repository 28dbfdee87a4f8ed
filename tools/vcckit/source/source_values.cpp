#include "vcckit/source/source_values.h"

#include "core/text.h"
#include "vcckit/text/latin1.h"
#include "vcckit/text/nearest.h"

#include <algorithm>
#include <array>
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

/// A number in quotes.
bool is_number(std::string_view text) {
    return !text.empty() && text.find_first_not_of("+-0123456789") == std::string_view::npos;
}

std::string in_quotes(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

/// What every table of fields may contain; the rest depends on the table.
bool stands_everywhere(const Field& field) {
    return field.member || field.size > 0 || field.letter != '\0' || field.name == "align" || field.name == "padding";
}

std::vector<std::string> known_entries(std::span<const std::string_view> others) {
    std::vector<std::string> known(others.begin(), others.end());
    for (const Field& field : all_fields())
        if (stands_everywhere(field))
            known.emplace_back(field.name);
    return known;
}

void note_place(SourceRecord& record, std::string_view field, const toml::node& node) {
    if (const auto number = field_number(field))
        record.places.fields[*number] = place_of(node.source());
}

} // namespace

Place place_of(const toml::source_region& region) {
    const auto &begin = region.begin, &end = region.end;
    return {std::max(1, static_cast<int>(begin.line)), std::max(1, static_cast<int>(begin.column)),
            end.line == begin.line && end.column > begin.column ? static_cast<int>(end.column - begin.column) : 0};
}

void SourceValues::fail(FaultCode code, const toml::node& node, std::string_view field, std::string problem,
                        std::string advice, std::string nearest) {
    fail_at(code, place_of(node.source()), field, std::move(problem), std::move(advice), std::move(nearest));
}

void SourceValues::fail_at(FaultCode code, const Place& place, std::string_view field, std::string problem,
                           std::string advice, std::string nearest) {
    faults_.push_back(
        source_fault(code, place, where, field, std::move(problem), std::move(advice), std::move(nearest)));
}

const toml::node* SourceValues::choose(const toml::node& node, std::string_view field) {
    const toml::node* chosen = &node;
    for (;;) {
        if (const toml::array* const list = chosen->as_array()) {
            if (static_cast<int>(list->size()) != repetition_count) {
                fail(list_length, *chosen, field,
                     "has " + std::to_string(list->size()) + " values for " + std::to_string(repetition_count) +
                         " records",
                     "a list has one value for each repetition");
                return nullptr;
            }
            chosen = list->get(static_cast<std::size_t>(repetition_index));
        } else if (const toml::table* const table = chosen->as_table(); table && !table->contains("raw")) {
            for (const auto& [key, value] : *table)
                if (std::none_of(languages.begin(), languages.end(),
                                 [name = key.str()](const LanguageRow& row) { return row.code == name; })) {
                    fail_at(language_missing, place_of(key.source()), field, in_quotes(key.str()) + " is no language",
                            "languages are en and de");
                    return nullptr;
                }
            const toml::node* const value = table->get(language_);
            if (!value) {
                fail(language_missing, *chosen, field, "has no value for the language " + in_quotes(language_),
                     "write one for en and one for de");
                return nullptr;
            }
            chosen = value;
        } else {
            return chosen;
        }
    }
}

void SourceValues::fail_name(const toml::node& node, Meaning meaning, std::string_view field, const std::string& name) {
    if (is_number(name)) {
        fail(wrong_kind, node, field, in_quotes(name) + " is a text", "write the number without quotes", name);
        return;
    }
    std::vector<std::string> known = names_of(meaning);
    for (const auto& [key, number] : names_)
        if (key.first == meaning)
            known.push_back(key.second);
    fail(unknown_name, node, field, "unknown " + std::string(meaning_word(meaning)) + " " + in_quotes(name),
         permitted_values(meaning), nearest_word(name, known));
}

std::optional<std::int32_t> SourceValues::integer(const toml::node& node, Meaning meaning, std::string_view field) {
    const toml::node* const chosen = choose(node, field);
    if (!chosen)
        return std::nullopt;
    if (const auto number = chosen->value_exact<std::int64_t>()) {
        if (*number >= INT32_MIN && *number <= INT32_MAX)
            return static_cast<std::int32_t>(*number);
        fail(out_of_range, *chosen, field, std::to_string(*number) + " does not fit in 32 bits", "");
        return std::nullopt;
    }
    const auto name = chosen->value_exact<std::string>();
    if (!name) {
        fail(wrong_kind, *chosen, field, "must be a number or a name", permitted_values(meaning));
        return std::nullopt;
    }
    if (const auto own = names_.find({meaning, *name}); own != names_.end())
        return own->second;
    if (const auto known = number_of_name(meaning, *name))
        return known;
    fail_name(*chosen, meaning, field, *name);
    return std::nullopt;
}

Repetition SourceValues::repetition(const toml::table& record) {
    Repetition out;
    const toml::node* const node = record.get("repeat");
    if (!node)
        return out;
    const toml::table* const table = node->as_table();
    const toml::node* const count = table ? table->get("count") : nullptr;
    if (!count) {
        fail(bad_repeat, *node, "repeat", "must be a table with a count", "repeat = { count = 3, dest_y = 26 }");
        return out;
    }
    out.count = integer(*count, Meaning::number, "repeat.count").value_or(1);
    if (out.count < 1 || out.count > slot_limit) {
        fail(bad_repeat, *count, "repeat.count", "must be 1 to " + std::to_string(slot_limit), "");
        out.count = 1;
    }
    if (const toml::node* const step = table->get("step"))
        out.step = std::clamp(integer(*step, Meaning::number, "repeat.step").value_or(1), -slot_limit, slot_limit);
    return out;
}

void SourceValues::apply_steps(SourceRecord& record, const toml::table& table) {
    const toml::table* const steps = table["repeat"].as_table();
    if (!steps)
        return;
    for (const auto& [key, node] : *steps) {
        if (key.str() == "count" || key.str() == "step")
            continue;
        const Field* const field = find_number_field(key.str());
        if (!field) {
            std::vector<std::string> known{"count", "step"};
            for (const Field& each : number_fields())
                known.emplace_back(each.name);
            fail_at(unknown_entry, place_of(key.source()), "repeat", in_quotes(key.str()) + " is no number field", "",
                    nearest_word(key.str(), known));
            continue;
        }
        const auto added = integer(node, Meaning::number, field->name);
        const std::int64_t value =
            record.slot.*field->member + static_cast<std::int64_t>(added.value_or(0)) * repetition_index;
        if (value < INT32_MIN || value > INT32_MAX) {
            fail(out_of_range, node, field->name, "does not fit in 32 bits", "");
        } else {
            record.slot.*field->member = static_cast<std::int32_t>(value);
            note_place(record, field->name, node);
        }
    }
}

void SourceValues::set_number(SourceRecord& record, const Field& field, const toml::node& node) {
    if (const auto value = integer(node, field.meaning, field.name)) {
        record.slot.*field.member = *value;
        const toml::node* const chosen = choose(node, field.name);
        note_place(record, field.name, chosen ? *chosen : node);
    }
}

void SourceValues::set_text(SourceRecord& record, const Field& field, const toml::node& node) {
    const toml::node* const chosen = choose(node, field.name);
    if (!chosen)
        return;
    note_place(record, field.name, *chosen);
    const std::span<char> bytes = bytes_of(record.slot, field);
    if (const toml::table* const table = chosen->as_table()) {
        // The bytes of the whole field, for records with something behind a text's end.
        const auto hex = (*table)["raw"].value_exact<std::string>();
        const auto raw = hex ? from_hex(*hex) : std::nullopt;
        if (!raw || raw->size() != bytes.size() || table->size() != 1)
            fail(bad_raw, *chosen, field.name,
                 "raw must be " + std::to_string(bytes.size()) + " bytes, two hexadecimal digits each", "");
        else
            std::copy(raw->begin(), raw->end(), bytes.begin());
        return;
    }
    const auto written = chosen->value_exact<std::string>();
    if (!written) {
        fail(wrong_kind, *chosen, field.name, "must be a text", "put it in quotes");
        return;
    }
    const auto text = to_latin1(*written);
    if (!text || text->find('\0') != std::string::npos)
        fail(not_latin1, *chosen, field.name, "has a character outside Windows Latin-1",
             "texts reach the program as bytes of Windows Latin-1");
    else if (text->size() >= bytes.size())
        fail(text_too_long, *chosen, field.name,
             "is " + std::to_string(text->size()) + " characters long, " + std::to_string(bytes.size() - 1) + " fit",
             "shorten it");
    else
        std::fill(std::copy(text->begin(), text->end(), bytes.begin()), bytes.end(), '\0');
}

bool SourceValues::set_flag(SourceRecord& record, std::string_view key, const toml::node& node) {
    const Field* const row = find_field(key);
    if (!row || row->letter == '\0')
        return false;
    bool on = true;
    if (const auto answer = node.value_exact<bool>()) {
        on = *answer;
    } else if (row->form == FieldForm::shadow) {
        if (const auto colour = integer(node, Meaning::colour, key)) {
            store_text(record.slot.sound_flags, std::to_string(*colour));
            note_place(record, "sound_flags", node);
        }
    } else {
        fail(wrong_kind, node, key, "must be true or false", "");
    }
    note_place(record, "draw_flags", node);
    // The letters count by position; a zero before one would end the text.
    auto& letters = record.slot.draw_flags;
    for (std::size_t i = 0; on && i < row->position; ++i)
        if (letters[i] == '\0')
            letters[i] = ' ';
    char& letter = letters[row->position];
    if (on)
        letter = row->letter;
    else if (letter == row->letter)
        letter = ' ';
    return true;
}

bool SourceValues::set_alignment(Alignment& alignment, std::string_view key, const toml::node& node) {
    constexpr std::pair<std::string_view, Align> words[] = {
        {"left", Align::left}, {"centre", Align::centre}, {"center", Align::centre}, {"right", Align::right}};
    if (key == "align") {
        const toml::node* const chosen = choose(node, key);
        const auto word = chosen ? chosen->value_exact<std::string>() : std::nullopt;
        for (const auto& [name, meaning] : words)
            if (word == name) {
                alignment.align = meaning;
                alignment.place = place_of(node.source());
                return true;
            }
        if (chosen)
            fail(unknown_name, *chosen, key, word ? "unknown word " + in_quotes(*word) : "must be a word",
                 "left, centre or right",
                 word ? nearest_word(*word, std::vector<std::string>{"left", "centre", "right"}) : "");
        return true;
    }
    if (key != "padding")
        return false;
    alignment.place = place_of(node.source());
    const auto pixels = [&](const toml::node& at) {
        const Field& padding = *find_field("padding");
        const auto number = at.value_exact<std::int64_t>();
        if (!number || *number < padding.min || *number > padding.max)
            fail(number ? out_of_range : wrong_kind, at, key, "must be " + range_of(padding),
                 "one number, or [x, y] for each direction");
        return static_cast<int>(std::clamp(number.value_or(0), padding.min, padding.max));
    };
    const toml::array* const pair = node.as_array();
    if (pair && pair->size() != 2) {
        fail(wrong_kind, node, key, "must be one number or two", "one number, or [x, y] for each direction");
        return true;
    }
    alignment.padding_x = pixels(pair ? *pair->get(0) : node);
    alignment.padding_y = pixels(pair ? *pair->get(1) : node);
    return true;
}

void SourceValues::apply(SourceRecord& record, const toml::table& table, std::span<const std::string_view> others) {
    std::vector<std::pair<const toml::key*, const toml::node*>> later;
    for (const auto& [key, node] : table) {
        if (std::find(others.begin(), others.end(), key.str()) != others.end())
            continue;
        if (const Field* const field = find_number_field(key.str()))
            set_number(record, *field, node);
        else if (const Field* const text = find_text_field(key.str()))
            set_text(record, *text, node);
        else
            later.emplace_back(&key, &node);
    }
    // The readable flags change what draw_flags and sound_flags of the same table say.
    for (const auto& [key, node] : later)
        if (!set_flag(record, key->str(), *node) && !set_alignment(record.alignment, key->str(), *node))
            fail_at(unknown_entry, place_of(key->source()), "", "unknown field " + in_quotes(key->str()), "",
                    nearest_word(key->str(), known_entries(others)));
}

} // namespace vcc::kit
