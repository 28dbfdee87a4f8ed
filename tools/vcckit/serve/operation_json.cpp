#include "vcckit/serve/operation_json.h"

#include "core/installation.h"
#include "display/buffers.h"
#include "screen/slot.h"
#include "screen/text_window.h"

#include <algorithm>
#include <limits>
#include <string_view>

namespace vcc::kit::edit {

using nlohmann::json;

namespace {

constexpr std::int64_t distance_limit = 1000; ///< pixels or cells of one move
constexpr std::size_t word_limit = 200;       ///< bytes of a label, a field's or a style's name

struct PlaceRow {
    const char* word;
    Address::Of of;
    int count; ///< of such records; 0: they have names
};
constexpr PlaceRow place_rows[] = {
    {"slot", Address::Of::slot, slot_limit},
    {"toggle", Address::Of::toggle, slot_limit},
    {"window", Address::Of::window, text_window_count},
    {"buffer", Address::Of::buffer, graphic_buffer_count},
    {"style", Address::Of::style, 0},
};

Failure wrong(const std::string& what, const std::string& why) {
    return {what + " " + why};
}

std::optional<std::string> word_entry(const json& object, const char* name) {
    auto text = text_entry(object, name);
    return text && text->size() <= word_limit ? text : std::nullopt;
}

Result<Address> address_of(const json& object) {
    if (!object.is_object())
        return wrong("of", "has an entry that is no object");
    for (const PlaceRow& row : place_rows) {
        if (!object.contains(row.word))
            continue;
        Address address;
        address.of = row.of;
        if (row.count > 0) {
            const auto index = number_entry(object, row.word, 0, row.count - 1);
            if (!index)
                return wrong(row.word, "is 0 to " + std::to_string(row.count - 1));
            address.index = static_cast<int>(*index);
        } else {
            const auto name = word_entry(object, row.word);
            if (!name)
                return wrong(row.word, "is a name");
            address.style = *name;
        }
        if (object.contains("look")) {
            const auto look = word_entry(object, "look");
            if (!look || (!look->empty() && *look != "highlight" && *look != "pressed"))
                return wrong("look", "is highlight or pressed");
            address.look = *look;
        }
        return address;
    }
    return wrong("of", "has an entry that names no slot, toggle, style, window or buffer");
}

Result<Value> value_of(const json& value) {
    if (value.is_boolean())
        return Value(value.get<bool>());
    if (value.is_string() && value.get_ref<const std::string&>().size() <= document_limit)
        return Value(value.get<std::string>());
    const auto number =
        number_entry({{"value", value}}, "value", std::numeric_limits<std::int32_t>::min(), // what a record can hold
                     std::numeric_limits<std::int32_t>::max());
    if (number)
        return Value(*number);
    return wrong("value", "is a number of 32 bits, true, false or a text");
}

/// Empty, or what is wrong.
std::string take_addresses(const json& object, Operation& operation) {
    const auto of = object.find("of");
    if (of == object.end() || !of->is_array() || of->empty() || of->size() > operation_limit)
        return "of is a list of slots, toggles, styles, windows or buffers";
    for (const json& each : *of) {
        auto address = address_of(each);
        if (!address)
            return address.reason();
        operation.of.push_back(std::move(*address));
    }
    return {};
}

std::string take_field(const json& object, Operation& operation) {
    const auto field = word_entry(object, "field");
    if (!field || field->empty())
        return "field is a name";
    operation.field = *field;
    if (!object.contains("language"))
        return {};
    const auto language = word_entry(object, "language");
    if (!language ||
        (!language->empty() && std::ranges::find(languages, *language, &LanguageRow::code) == languages.end()))
        return "language is en or de";
    operation.language = *language;
    return {};
}

Result<Operation> operation_of(const json& object) {
    const auto word = object.is_object() ? word_entry(object, "do") : std::nullopt;
    const auto* const row =
        std::ranges::find_if(operation_rows, [&](const OperationRow& each) { return word && *word == each.word; });
    if (row == std::end(operation_rows))
        return Failure{"an operation has no known \"do\""};
    Operation operation;
    operation.what = row->what;
    std::string fault;
    if (row->of)
        fault = take_addresses(object, operation);
    if (fault.empty() && row->field)
        fault = take_field(object, operation);
    if (fault.empty() && row->value) {
        auto value = object.contains("value") ? value_of(object["value"]) : Failure{"value is missing"};
        if (!value)
            fault = value.reason();
        else
            operation.value = std::move(*value);
    }
    if (fault.empty() && row->distance)
        for (const auto& [name, place] : {std::pair{"dx", &operation.dx}, {"dy", &operation.dy}}) {
            const auto distance = object.contains(name) ? number_entry(object, name, -distance_limit, distance_limit)
                                                        : std::optional<std::int64_t>(0);
            if (!distance)
                fault = std::string(name) + " is -1000 to 1000";
            else
                *place = static_cast<int>(*distance);
        }
    if (fault.empty() && row->to) {
        const auto to = number_entry(object, "to", 0, slot_limit - 1);
        if (!to)
            fault = "to is 0 to 199";
        else
            operation.to = static_cast<int>(*to);
    }
    if (fault.empty() && row->text) {
        auto text = text_entry(object, "text");
        if (!text && (operation.what == Operation::Do::replace_text || object.contains("text")))
            fault = "text is a text of at most 1 MiB";
        else
            operation.text = std::move(text).value_or("");
        operation.base = text_entry(object, "base");
    }
    if (!fault.empty())
        return Failure{std::string(row->word) + ": " + fault};
    return operation;
}

} // namespace

std::optional<std::string> text_entry(const json& object, const char* name) {
    const auto found = object.is_object() ? object.find(name) : object.end();
    if (found == object.end() || !found->is_string() || found->get_ref<const std::string&>().size() > document_limit)
        return std::nullopt;
    return found->get<std::string>();
}

std::optional<std::int64_t> number_entry(const json& object, const char* name, std::int64_t least, std::int64_t most) {
    const auto found = object.is_object() ? object.find(name) : object.end();
    if (found == object.end() || !found->is_number_integer())
        return std::nullopt;
    if (found->is_number_unsigned() &&
        found->get<std::uint64_t>() > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
        return std::nullopt;
    const auto number = found->get<std::int64_t>();
    return number >= least && number <= most ? std::optional(number) : std::nullopt;
}

Result<EditRequest> edit_request_of(const json& object) {
    EditRequest request;
    const auto name = text_entry(object, "name");
    if (!name)
        return Failure{"name is that of a document"};
    const auto revision = number_entry(object, "revision", 0, std::numeric_limits<std::int64_t>::max());
    if (!revision)
        return Failure{"revision is a number from 0 on"};
    for (const auto& [word, place] : {std::pair{"label", &request.label}, {"merge", &request.merge_key}}) {
        if (!object.contains(word) || object[word].is_null())
            continue;
        auto text = word_entry(object, word);
        if (!text)
            return Failure{std::string(word) + " is a text of at most 200 bytes"};
        *place = std::move(*text);
    }
    const auto operations = object.find("operations");
    if (operations == object.end() || !operations->is_array() || operations->empty() ||
        operations->size() > operation_limit)
        return Failure{"operations is a list of 1 to 10000"};
    request.name = *name;
    request.revision = *revision;
    for (const json& each : *operations) {
        auto operation = operation_of(each);
        if (!operation)
            return Failure{operation.reason()};
        request.operations.push_back(std::move(*operation));
    }
    return request;
}

} // namespace vcc::kit::edit
