#include "vcckit/serve/requests.h"

#include "vcckit/edit/source_model.h"
#include "vcckit/serve/document_json.h"

#include "core/installation.h"
#include "display/buffers.h"
#include "screen/slot.h"
#include "screen/text_window.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace vcc::kit::edit {

using nlohmann::json;

namespace {

constexpr int distance_limit = 1000;    ///< pixels or cells of one move
constexpr std::size_t word_limit = 200; ///< bytes of a label, a field's or a style's name

/// How many of them there are; 0: they have names.
constexpr std::pair<Address::Of, int> places[] = {{Address::Of::slot, slot_limit},
                                                  {Address::Of::toggle, slot_limit},
                                                  {Address::Of::window, text_window_count},
                                                  {Address::Of::buffer, graphic_buffer_count},
                                                  {Address::Of::style, 0}};

/// A value that is there and as it must be; otherwise the request is refused.
template <class Value>
Value expected(std::optional<Value> value, const std::string& otherwise) {
    return value ? std::move(*value) : throw BadRequest(otherwise);
}

/// A list that is neither empty nor too long, by what reads its entries.
template <class Entry>
std::vector<Entry> list_entry(const json& object, const char* name, Entry (*read)(const json&),
                              const std::string& otherwise) {
    const auto list = object.find(name);
    if (list == object.end() || !list->is_array() || list->empty() || list->size() > operation_limit)
        throw BadRequest(otherwise);
    std::vector<Entry> entries;
    std::ranges::transform(*list, std::back_inserter(entries), read);
    return entries;
}

std::optional<std::string> word_entry(const json& object, const char* name) {
    auto text = text_entry(object, name);
    return text && text->size() <= word_limit ? text : std::nullopt;
}

int number_of(const json& object, const char* name, int least, int most, const std::string& otherwise) {
    return static_cast<int>(expected(number_entry(object, name, least, most), otherwise));
}

Address address_of(const json& object) {
    if (!object.is_object())
        throw BadRequest("of has an entry that is no object");
    const auto* const place =
        std::ranges::find_if(places, [&](const auto& each) { return object.contains(key_of(each.first)); });
    if (place == std::end(places))
        throw BadRequest("of has an entry that names no slot, toggle, style, window or buffer");
    Address address;
    address.of = place->first;
    const std::string word = key_of(address.of);
    if (const int last = place->second - 1; last >= 0)
        address.index = number_of(object, word.c_str(), 0, last, word + " is 0 to " + std::to_string(last));
    else
        address.style = expected(word_entry(object, word.c_str()), word + " is a name");
    if (object.contains("look"))
        address.look = expected(word_entry(object, "look"), "look is highlight or pressed");
    if (!address.look.empty() && address.look != "highlight" && address.look != "pressed")
        throw BadRequest("look is highlight or pressed");
    return address;
}

Value value_of(const json& object) {
    const auto value = object.find("value");
    if (value == object.end())
        throw BadRequest("value is missing");
    if (value->is_boolean())
        return value->get<bool>();
    if (auto text = text_entry(object, "value"))
        return std::move(*text);
    using Limits = std::numeric_limits<std::int32_t>; // what a record can hold
    return expected(number_entry(object, "value", Limits::min(), Limits::max()),
                    "value is a number of 32 bits, true, false or a text");
}

/// Takes what an operation of this kind must have.
void take_entries(const json& object, const OperationRow& row, Operation& operation) {
    if (row.of)
        operation.of =
            list_entry(object, "of", address_of, "of is a list of slots, toggles, styles, windows or buffers");
    if (row.field) {
        operation.field = expected(word_entry(object, "field"), "field is a name");
        if (operation.field.empty())
            throw BadRequest("field is a name");
        const std::string code =
            object.contains("language") ? expected(word_entry(object, "language"), "language is en or de") : "";
        if (!code.empty())
            operation.language = language_of(code);
    }
    if (row.value)
        operation.value = value_of(object);
    if (row.distance)
        for (const auto& [name, place] : {std::pair{"dx", &operation.dx}, {"dy", &operation.dy}})
            if (object.contains(name))
                *place =
                    number_of(object, name, -distance_limit, distance_limit, std::string(name) + " is -1000 to 1000");
    if (row.to)
        operation.to = number_of(object, "to", 0, slot_limit - 1, "to is 0 to 199");
    if (row.text && (row.what == Operation::Do::replace_text || object.contains("text")))
        operation.text = expected(text_entry(object, "text"), "text is a text of at most 1 MiB");
    if (row.text)
        operation.base = text_entry(object, "base");
}

Operation operation_of(const json& object) {
    const auto word = word_entry(object, "do");
    const auto* const row =
        std::ranges::find_if(operation_rows, [&](const OperationRow& each) { return word && *word == each.word; });
    if (row == std::end(operation_rows))
        throw BadRequest("an operation has no known \"do\"");
    Operation operation;
    operation.what = row->what;
    try {
        take_entries(object, *row, operation);
    } catch (const BadRequest& bad) {
        throw BadRequest(*word + ": " + bad.what());
    }
    return operation;
}

} // namespace

Answer refusal(int status, const std::string& reason) {
    return {.status = status, .body = text_of_json({{"error", reason}})};
}

std::size_t language_of(const std::string& code) {
    const auto* const row = std::ranges::find(languages, code, &LanguageRow::code);
    return row != languages.end() ? static_cast<std::size_t>(row - languages.begin())
                                  : throw BadRequest("language is en or de");
}

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

EditRequest edit_request_of(const json& object) {
    EditRequest request;
    request.name = expected(text_entry(object, "name"), "name is that of a document");
    request.revision = expected(number_entry(object, "revision", 0, std::numeric_limits<std::int64_t>::max()),
                                "revision is a number from 0 on");
    for (const auto& [word, place] : {std::pair{"label", &request.label}, {"merge", &request.merge_key}})
        if (object.contains(word) && !object[word].is_null())
            *place = expected(word_entry(object, word), std::string(word) + " is a text of at most 200 bytes");
    request.operations = list_entry(object, "operations", operation_of, "operations is a list of 1 to 10000");
    return request;
}

} // namespace vcc::kit::edit
