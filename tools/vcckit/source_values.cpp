#include "source_values.h"

#include "core/text.h"
#include "latin1.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace vcc::kit {

namespace {

/// Readable entries that set one character of draw_flags.
struct FlagRow {
    std::string_view key;
    std::size_t position;
    char letter;
};
constexpr std::array<FlagRow, 3> flags{{{"hidden", 0, 'n'}, {"shadow", 1, 's'}, {"focus_skip", 2, 'x'}}};

bool is_language_table(const toml::table& table) {
    return std::any_of(languages.begin(), languages.end(),
                       [&table](const LanguageRow& language) { return table.contains(language.code); });
}

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

} // namespace

void SourceValues::fail(const toml::node& node, const std::string& text) {
    fail_at(line_of(node), where.empty() ? text : where + ": " + text);
}

const toml::node* SourceValues::choose(const toml::node& node, std::string_view field) {
    const toml::node* chosen = &node;
    for (;;) {
        if (const toml::array* const list = chosen->as_array()) {
            if (static_cast<int>(list->size()) != repetition_count) {
                fail(*chosen, std::string(field) + ": has " + std::to_string(list->size()) + " values for " +
                                  std::to_string(repetition_count) + " records");
                return nullptr;
            }
            chosen = list->get(static_cast<std::size_t>(repetition_index));
        } else if (const toml::table* const table = chosen->as_table(); table && is_language_table(*table)) {
            for (const auto& [key, value] : *table)
                if (std::none_of(languages.begin(), languages.end(),
                                 [name = key.str()](const LanguageRow& row) { return row.code == name; })) {
                    fail(value, std::string(field) + ": \"" + std::string(key.str()) + "\" is no language");
                    return nullptr;
                }
            const toml::node* const value = table->get(language_);
            if (!value) {
                fail(*chosen,
                     std::string(field) + ": has no value for the language \"" + std::string(language_) + "\"");
                return nullptr;
            }
            chosen = value;
        } else {
            return chosen;
        }
    }
}

std::optional<std::int32_t> SourceValues::integer(const toml::node& node, Meaning meaning, std::string_view field) {
    const toml::node* const chosen = choose(node, field);
    if (!chosen)
        return std::nullopt;
    if (const auto number = chosen->value_exact<std::int64_t>()) {
        if (*number >= INT32_MIN && *number <= INT32_MAX)
            return static_cast<std::int32_t>(*number);
        fail(*chosen, std::string(field) + ": " + std::to_string(*number) + " does not fit in 32 bits");
        return std::nullopt;
    }
    const auto name = chosen->value_exact<std::string>();
    if (!name) {
        fail(*chosen, std::string(field) + ": must be a number or a name");
        return std::nullopt;
    }
    if (const auto own = names_.find({meaning, *name}); own != names_.end())
        return own->second;
    if (const auto known = number_of_name(meaning, *name))
        return known;
    fail(*chosen, std::string(field) + ": unknown " + std::string(meaning_word(meaning)) + " \"" + *name + "\"");
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
        fail(*node, "repeat: must be a table with a count");
        return out;
    }
    out.count = integer(*count, Meaning::number, "repeat.count").value_or(1);
    if (out.count < 1 || out.count > slot_limit) {
        fail(*count, "repeat.count: must be 1 to " + std::to_string(slot_limit));
        out.count = 1;
    }
    if (const toml::node* const step = table->get("step"))
        out.step = std::clamp(integer(*step, Meaning::number, "repeat.step").value_or(1), -slot_limit, slot_limit);
    return out;
}

void SourceValues::apply_steps(Slot& slot, const toml::table& record) {
    const toml::table* const steps = record["repeat"].as_table();
    if (!steps)
        return;
    for (const auto& [key, node] : *steps) {
        if (key.str() == "count" || key.str() == "step")
            continue;
        const NumberField* const field = find_number_field(key.str());
        if (!field) {
            fail(node, "repeat: \"" + std::string(key.str()) + "\" is no number field");
            continue;
        }
        const auto added = integer(node, Meaning::number, field->name);
        const std::int64_t value =
            slot.*field->member + static_cast<std::int64_t>(added.value_or(0)) * repetition_index;
        if (value < INT32_MIN || value > INT32_MAX)
            fail(node, std::string(field->name) + ": does not fit in 32 bits");
        else
            slot.*field->member = static_cast<std::int32_t>(value);
    }
}

void SourceValues::set_text(Slot& slot, const TextField& field, const toml::node& node) {
    const toml::node* const chosen = choose(node, field.name);
    if (!chosen)
        return;
    const std::span<char> bytes = bytes_of(slot, field);
    if (const toml::table* const table = chosen->as_table()) {
        // The bytes of the whole field, for records with something behind a text's end.
        const auto hex = (*table)["raw"].value_exact<std::string>();
        const auto raw = hex ? from_hex(*hex) : std::nullopt;
        if (!raw || raw->size() != bytes.size() || table->size() != 1)
            fail(*chosen, std::string(field.name) + ": raw must be " + std::to_string(bytes.size()) +
                              " bytes, two hexadecimal digits each");
        else
            std::copy(raw->begin(), raw->end(), bytes.begin());
        return;
    }
    const auto written = chosen->value_exact<std::string>();
    if (!written) {
        fail(*chosen, std::string(field.name) + ": must be a text");
        return;
    }
    const auto text = to_latin1(*written);
    if (!text || text->find('\0') != std::string::npos)
        fail(*chosen, std::string(field.name) + ": has a character outside Windows Latin-1");
    else if (text->size() >= bytes.size())
        fail(*chosen, std::string(field.name) + ": is " + std::to_string(text->size()) + " characters long, " +
                          std::to_string(bytes.size() - 1) + " fit");
    else
        std::fill(std::copy(text->begin(), text->end(), bytes.begin()), bytes.end(), '\0');
}

bool SourceValues::set_flag(Slot& slot, std::string_view key, const toml::node& node) {
    const auto row = std::find_if(flags.begin(), flags.end(), [key](const FlagRow& flag) { return flag.key == key; });
    if (row == flags.end())
        return false;
    bool on = true;
    if (const auto answer = node.value_exact<bool>()) {
        on = *answer;
    } else if (key == "shadow") {
        if (const auto colour = integer(node, Meaning::colour, key))
            store_text(slot.sound_flags, std::to_string(*colour));
    } else {
        fail(node, std::string(key) + ": must be true or false");
    }
    // The letters count by position; a zero before one would end the text.
    for (std::size_t i = 0; on && i < row->position; ++i)
        if (slot.draw_flags[i] == '\0')
            slot.draw_flags[i] = ' ';
    char& letter = slot.draw_flags[row->position];
    if (on)
        letter = row->letter;
    else if (letter == row->letter)
        letter = ' ';
    return true;
}

void SourceValues::apply(Slot& slot, const toml::table& table, std::span<const std::string_view> others) {
    std::vector<std::pair<std::string_view, const toml::node*>> later;
    for (const auto& [key, node] : table) {
        if (std::find(others.begin(), others.end(), key.str()) != others.end())
            continue;
        if (const NumberField* const field = find_number_field(key.str())) {
            if (const auto value = integer(node, field->meaning, field->name))
                slot.*field->member = *value;
        } else if (const TextField* const text = find_text_field(key.str())) {
            set_text(slot, *text, node);
        } else {
            later.emplace_back(key.str(), &node);
        }
    }
    // The readable flags change what draw_flags and sound_flags of the same table say.
    for (const auto& [key, node] : later)
        if (!set_flag(slot, key, *node))
            fail(*node, "unknown field \"" + std::string(key) + "\"");
}

} // namespace vcc::kit
