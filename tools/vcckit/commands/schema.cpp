// The command schema: what a screen source may say, as a JSON schema, from the tables of fields and names.
#include "vcckit/commands/commands.h"
#include "vcckit/record/fields.h"
#include "vcckit/source/screen_source.h"

#include <cstdio>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

namespace vcc::kit {

namespace {

using Json = nlohmann::ordered_json;

Json operator""_json_text(const char* text, std::size_t size) {
    return Json::parse(std::string_view(text, size));
}

Json reference(std::string_view definition) {
    return {{"$ref", "#/definitions/" + std::string(definition)}};
}

Json any_of(const std::vector<Json>& choices) {
    return {{"anyOf", choices}};
}

Json object_of(Json properties, const std::vector<std::string>& required = {}) {
    Json object{{"type", "object"}, {"additionalProperties", false}};
    if (!required.empty())
        object["required"] = required;
    object["properties"] = std::move(properties);
    return object;
}

std::string definition_of(Meaning meaning) {
    return std::string(meaning_word(meaning)) + "_value";
}

/// A value alone, in a table by language, or in a list for repeated records.
void define_value(Json& definitions, const std::string& name, Json plain) {
    const std::string base = name + "_plain", by_language = name + "_by_language";
    Json languages_shown;
    std::vector<std::string> codes;
    for (const LanguageRow& language : languages) {
        languages_shown[std::string(language.code)] = reference(base);
        codes.emplace_back(language.code);
    }
    definitions[base] = std::move(plain);
    definitions[by_language] = object_of(std::move(languages_shown), codes);
    const std::vector<Json> single{reference(base), reference(by_language)};
    definitions[name] = any_of({single[0], single[1], {{"type", "array"}, {"items", any_of(single)}}});
}

/// Offers the built-in names, but allows others, which a source may define.
Json number_or_name(Meaning meaning) {
    std::vector<Json> choices{{{"type", "integer"}}, {{"type", "string"}}};
    if (const std::vector<std::string> names = names_of(meaning); !names.empty())
        choices.insert(choices.begin() + 1, Json{{"enum", names}});
    return any_of(choices);
}

Json number_in_range(const Field& field) {
    return {{"type", "integer"}, {"minimum", field.min}, {"maximum", field.max}};
}

/// A number that is the same for all languages and repetitions, or its name.
Json plain_number(const Json& number = {{"type", "integer"}}) {
    return any_of({number, {{"type", "string"}}});
}

/// What a source may write for a field; null for what only some tables have.
Json value_of(const Field& field) {
    switch (field.form) {
    case FieldForm::number:
        return reference(definition_of(field.meaning));
    case FieldForm::text:
        return reference("text_value");
    case FieldForm::word:
        return reference("align_value");
    case FieldForm::flag:
        return {{"type", "boolean"}};
    case FieldForm::shadow:
        return any_of({{{"type", "boolean"}}, reference(definition_of(field.meaning))});
    case FieldForm::pair:
        return any_of({number_in_range(field),
                       {{"type", "array"}, {"minItems", 2}, {"maxItems", 2}, {"items", number_in_range(field)}}});
    case FieldForm::plain:
    case FieldForm::styles:
    case FieldForm::look:
        break;
    }
    return {};
}

/// A table of fields, and more entries.
Json table(const std::vector<Json>& more, const std::vector<std::string>& required = {}) {
    Json properties;
    for (const Field& field : all_fields())
        if (Json value = value_of(field); !value.is_null())
            properties[std::string(field.name)] = std::move(value);
    for (const Json& entries : more)
        properties.update(entries);
    return object_of(std::move(properties), required);
}

Json repeat_table() {
    Json properties{{"count", plain_number({{"type", "integer"}, {"minimum", 1}, {"maximum", 200}})},
                    {"step", plain_number()}};
    for (const Field& field : number_fields())
        properties[std::string(field.name)] = plain_number();
    return object_of(std::move(properties), {"count"});
}

Json names_table() {
    Json properties;
    for (const Meaning meaning : all_meanings)
        properties[std::string(meaning_word(meaning))] =
            R"({"type": "object", "additionalProperties": {"type": "integer"}})"_json_text;
    return object_of(std::move(properties));
}

} // namespace

std::string screen_schema() {
    const Json style = R"({"style": {"anyOf": [{"type": "string"},
        {"type": "array", "items": {"type": "string"}}]}})"_json_text;
    const Json looks = R"({"highlight": {"anyOf": [{"const": false}, {"$ref": "#/definitions/look"}]},
        "pressed": {"anyOf": [{"const": false}, {"$ref": "#/definitions/pressed_look"}]}})"_json_text;
    const Json record{{"index", reference("index")}, {"repeat", reference("repeat")}};
    Json definitions;
    for (const Meaning meaning : all_meanings)
        define_value(definitions, definition_of(meaning), number_or_name(meaning));
    define_value(definitions, "text_value",
                 R"({"anyOf": [{"type": "string"}, {"type": "object", "additionalProperties": false,
                     "required": ["raw"],
                     "properties": {"raw": {"type": "string", "pattern": "^([0-9a-fA-F]{2})*$"}}}]})"_json_text);
    define_value(definitions, "align_value", R"({"enum": ["left", "centre", "center", "right"]})"_json_text);
    definitions["index"] = plain_number(number_in_range(*find_field("index")));
    definitions["count"] = plain_number({{"type", "integer"}, {"minimum", 0}, {"maximum", 200}});
    definitions["repeat"] = repeat_table();
    definitions["names"] = names_table();
    const Json copy{{"copy", reference(definition_of(Meaning::number))}}, pressed{{"index", reference("index")}};
    definitions["look"] = table({});
    definitions["pressed_look"] = table(std::vector{pressed});
    definitions["style"] = table({style, looks});
    definitions["slot"] = table({record, style, looks}, {"index"});
    definitions["toggle"] = table({record, style, copy}, {"index"});
    Json schema = R"({"$schema": "http://json-schema.org/draft-07/schema#", "title": "Veldor screen source",
        "type": "object", "additionalProperties": false, "properties": {
            "name": {"type": "string", "description": "vcc, vcc_options, vcc_options_info or mess"},
            "language": {"enum": ["en", "de"]},
            "slot_count": {"$ref": "#/definitions/count"},
            "toggle_count": {"$ref": "#/definitions/count"},
            "names": {"$ref": "#/definitions/names"},
            "style": {"type": "object", "additionalProperties": {"$ref": "#/definitions/style"}},
            "slot": {"type": "array", "items": {"$ref": "#/definitions/slot"}},
            "toggle": {"type": "array", "items": {"$ref": "#/definitions/toggle"}}}})"_json_text;
    schema["definitions"] = std::move(definitions);
    return schema.dump(2) + "\n";
}

int run_schema(bool fields) {
    std::fputs((fields ? field_table() : screen_schema()).c_str(), stdout);
    return exit_clean;
}

} // namespace vcc::kit
