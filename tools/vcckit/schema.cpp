#include "schema.h"

#include "commands.h"
#include "field_help.h"
#include "fields.h"
#include "screen_source.h"

#include <cstdio>
#include <iterator>
#include <string_view>
#include <vector>

namespace vcc::kit {

namespace {

std::string quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

std::string reference(std::string_view definition) {
    return "{ \"$ref\": \"#/definitions/" + std::string(definition) + "\" }";
}

std::string definition_of(Meaning meaning) {
    return std::string(meaning_word(meaning)) + "_value";
}

/// A value alone, in a table by language, or in a list for repeated records.
std::string value_definition(std::string_view name, const std::string& plain) {
    const std::string base = std::string(name) + "_plain", by_language = std::string(name) + "_by_language";
    std::string languages_text, needed;
    for (const LanguageRow& language : languages) {
        const std::string separator = languages_text.empty() ? "" : ", ";
        languages_text += separator + quoted(language.code) + ": " + reference(base);
        needed += separator + quoted(language.code);
    }
    return "    " + quoted(base) + ": " + plain + ",\n    " + quoted(by_language) +
           ": { \"type\": \"object\", \"additionalProperties\": false, \"required\": [" + needed +
           "], \"properties\": { " + languages_text + " } },\n    " + quoted(name) + ": { \"anyOf\": [" +
           reference(base) + ", " + reference(by_language) + ", { \"type\": \"array\", \"items\": { \"anyOf\": [" +
           reference(base) + ", " + reference(by_language) + "] } }] }";
}

/// Offers the built-in names, but allows others, which a source may define.
std::string number_definition(Meaning meaning) {
    std::string names;
    for (const std::string& name : names_of(meaning))
        names += (names.empty() ? "" : ", ") + quoted(name);
    std::string plain = "{ \"anyOf\": [{ \"type\": \"integer\" }, ";
    if (!names.empty())
        plain += "{ \"enum\": [" + names + "] }, ";
    return value_definition(definition_of(meaning), plain + "{ \"type\": \"string\" }] }");
}

std::string field_properties() {
    std::string text;
    for (const NumberField& field : number_fields())
        text += "        " + quoted(field.name) + ": " + reference(definition_of(field.meaning)) + ",\n";
    for (const TextField& field : text_fields())
        text += "        " + quoted(field.name) + ": " + reference("text_value") + ",\n";
    return text +
           "        \"hidden\": { \"type\": \"boolean\" },\n"
           "        \"focus_skip\": { \"type\": \"boolean\" },\n"
           "        \"shadow\": { \"anyOf\": [{ \"type\": \"boolean\" }, " +
           reference(definition_of(Meaning::colour)) +
           "] },\n"
           "        \"align\": { \"enum\": [\"left\", \"centre\", \"center\", \"right\"] },\n"
           "        \"padding\": { \"anyOf\": [{ \"type\": \"integer\", \"minimum\": 0, \"maximum\": 800 }, "
           "{ \"type\": \"array\", \"minItems\": 2, \"maxItems\": 2, \"items\": { \"type\": \"integer\" } }] }";
}

std::string table_definition(std::string_view name, const std::string& more, std::string_view required = "") {
    return "    " + quoted(name) + ": {\n      \"type\": \"object\", \"additionalProperties\": false," +
           (required.empty() ? "" : " \"required\": [" + quoted(required) + "],") + "\n      \"properties\": {\n" +
           field_properties() + more + "\n      }\n    }";
}

constexpr const char* style_entry =
    ",\n        \"style\": { \"anyOf\": [{ \"type\": \"string\" }, { \"type\": \"array\", \"items\": { \"type\": "
    "\"string\" } }] }";
constexpr const char* look_entries =
    ",\n        \"highlight\": { \"anyOf\": [{ \"const\": false }, { \"$ref\": \"#/definitions/look\" }] }"
    ",\n        \"pressed\": { \"anyOf\": [{ \"const\": false }, { \"$ref\": \"#/definitions/pressed_look\" }] }";
constexpr const char* record_entries = ",\n        \"index\": { \"$ref\": \"#/definitions/index\" }"
                                       ",\n        \"repeat\": { \"$ref\": \"#/definitions/repeat\" }";

std::string repeat_definition() {
    std::string text =
        "    \"repeat\": {\n      \"type\": \"object\", \"additionalProperties\": false, \"required\": "
        "[\"count\"],\n      \"properties\": {\n        \"count\": { \"type\": \"integer\", \"minimum\": "
        "1, \"maximum\": 200 },\n        \"step\": { \"type\": \"integer\" }";
    for (const NumberField& field : number_fields())
        text += ",\n        " + quoted(field.name) + ": { \"type\": \"integer\" }";
    return text + "\n      }\n    }";
}

std::string names_definition() {
    std::string text = "    \"names\": {\n      \"type\": \"object\", \"additionalProperties\": false,\n      "
                       "\"properties\": {";
    for (const Meaning meaning : all_meanings)
        text += (meaning == all_meanings.front() ? "\n        " : ",\n        ") + quoted(meaning_word(meaning)) +
                ": { \"type\": \"object\", \"additionalProperties\": { \"type\": \"integer\" } }";
    return text + "\n      }\n    }";
}

/// Formats JSON with one entry per line.
std::string laid_out(const std::string& json) {
    std::string out;
    std::size_t depth = 0;
    bool in_text = false;
    const auto new_line = [&] { out += "\n" + std::string(2 * depth, ' '); };
    for (std::size_t i = 0; i < json.size(); ++i) {
        const char c = json[i];
        if (c == '"' && (i == 0 || json[i - 1] != '\\'))
            in_text = !in_text;
        const bool blank = !in_text && (c == ' ' || c == '\n');
        if (in_text || c == '"' || (!blank && std::string_view("{[}],:").find(c) == std::string_view::npos)) {
            out += c;
        } else if (c == '{' || c == '[') {
            out += c;
            ++depth;
            new_line();
        } else if (c == '}' || c == ']') {
            --depth;
            new_line();
            out += c;
        } else if (c == ',') {
            out += c;
            new_line();
        } else if (c == ':') {
            out += ": ";
        }
    }
    return out + "\n";
}

} // namespace

std::string screen_schema() {
    std::vector<std::string> definitions;
    definitions.reserve(std::size(all_meanings) + 4);
    for (const Meaning meaning : all_meanings)
        definitions.push_back(number_definition(meaning));
    definitions.push_back(value_definition(
        "text_value",
        "{ \"anyOf\": [{ \"type\": \"string\" }, { \"type\": \"object\", \"additionalProperties\": false, "
        "\"required\": "
        "[\"raw\"], \"properties\": { \"raw\": { \"type\": \"string\", \"pattern\": \"^([0-9a-fA-F]{2})*$\" } } }] }"));
    definitions.emplace_back("\"index\": { \"anyOf\": [{ \"type\": \"integer\", \"minimum\": 0, \"maximum\": 199 }, "
                             "{ \"type\": \"string\" }] }");
    definitions.push_back(repeat_definition());
    definitions.push_back(names_definition());
    definitions.push_back(table_definition("look", ""));
    definitions.push_back(
        table_definition("pressed_look", ",\n        \"index\": { \"$ref\": \"#/definitions/index\" }"));
    definitions.push_back(table_definition("style", std::string(style_entry) + look_entries));
    definitions.push_back(table_definition("slot", std::string(record_entries) + style_entry + look_entries, "index"));
    definitions.push_back(table_definition("toggle",
                                           std::string(record_entries) + style_entry +
                                               ",\n        \"copy\": " + reference(definition_of(Meaning::number)),
                                           "index"));
    std::string text =
        "{\n  \"$schema\": \"http://json-schema.org/draft-07/schema#\",\n  \"title\": \"Veldor screen source\",\n  "
        "\"type\": \"object\",\n  \"additionalProperties\": false,\n  \"properties\": {\n"
        "    \"name\": { \"type\": \"string\", \"description\": \"vcc, vcc_options, vcc_options_info or mess\" },\n"
        "    \"slot_count\": { \"type\": \"integer\", \"minimum\": 0, \"maximum\": 200 },\n"
        "    \"toggle_count\": { \"type\": \"integer\", \"minimum\": 0, \"maximum\": 200 },\n"
        "    \"names\": { \"$ref\": \"#/definitions/names\" },\n"
        "    \"style\": { \"type\": \"object\", \"additionalProperties\": { \"$ref\": \"#/definitions/style\" } },\n"
        "    \"slot\": { \"type\": \"array\", \"items\": { \"$ref\": \"#/definitions/slot\" } },\n"
        "    \"toggle\": { \"type\": \"array\", \"items\": { \"$ref\": \"#/definitions/toggle\" } }\n  },\n"
        "  \"definitions\": {\n";
    for (const std::string& definition : definitions)
        text += definition + (&definition == &definitions.back() ? "\n" : ",\n");
    return laid_out(text + "} }");
}

int run_schema(bool fields) {
    std::fputs((fields ? field_table() : screen_schema()).c_str(), stdout);
    return exit_clean;
}

} // namespace vcc::kit
