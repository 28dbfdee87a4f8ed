#include "vcckit/edit/source_edit.h"

#include "vcckit/edit/field_edit.h"
#include "vcckit/edit/record_edit.h"
#include "vcckit/edit/source_model.h"
#include "vcckit/edit/window_edit.h"

#include <algorithm>

namespace vcc::kit::edit {

namespace {

using Do = Operation::Do;

/// Texts read again for every part of every operation: bytes times parts.
constexpr std::size_t work_limit = 512u << 20;

std::optional<std::size_t> language_of(const std::string& code) {
    if (code.empty())
        return std::nullopt;
    for (std::size_t i = 0; i < languages.size(); ++i)
        if (languages[i].code == code)
            return i;
    throw Refused("\"" + code + "\" is no language: there are en and de");
}

std::string change_field(const std::string& text, const Address& address, const Operation& operation) {
    const auto language = language_of(operation.language);
    Opened at(text, address);
    if (operation.what == Do::set)
        set_field(at, operation.field, language, operation.value);
    else
        unset_field(at, operation.field, language);
    return at.edits.result();
}

/// What an operation does to one address, on what the ones before have left.
std::string run_part(const std::string& text, const Address& address, const Operation& operation, DocumentKind kind,
                     const EditRules& rules) {
    if (kind == DocumentKind::windows)
        return change_window(text, address, operation);
    if (operation.what == Do::remove)
        return remove_record(text, address, rules);
    return operation.what == Do::split ? split_group(text, address) : change_field(text, address, operation);
}

std::string run(std::string text, DocumentKind kind, const Operation& operation, const EditRules& rules) {
    const bool screen = kind == DocumentKind::screen;
    if (operation.what == Do::replace_text)
        return operation.text;
    if (operation.what == Do::create)
        return screen ? create_record(text, operation) : create_window(text, operation);
    if (screen && (operation.what == Do::move || operation.what == Do::resize))
        return move_or_resize(std::move(text), operation);
    if (screen && operation.what == Do::copy)
        return copy_record(text, operation);
    if (screen && operation.what == Do::renumber)
        return renumber_record(text, operation, rules);
    for (const Address& address : operation.of)
        text = run_part(text, address, operation, kind, rules);
    return text;
}

std::string applied(std::string text, DocumentKind kind, std::span<const Operation> operations,
                    const EditRules& rules) {
    std::size_t parts = 0;
    for (const Operation& operation : operations)
        parts += std::max<std::size_t>(1, operation.of.size());
    if (parts > operation_limit)
        throw Refused("more than " + std::to_string(operation_limit) + " operations at once");
    if (parts * text.size() > work_limit)
        throw Refused("too many operations at once for a source of this size");
    for (const Operation& operation : operations) {
        std::string next = run(text, kind, operation, rules);
        if (kind == DocumentKind::screen && operation.what != Do::replace_text && next != text)
            if (const auto tree = read_source_tree(next); !tree)
                throw Refused("the change does not fit into the source as it is written: " + tree.reason());
        text = std::move(next);
        if (text.size() > document_limit)
            throw Refused("the text would be longer than " + std::to_string(document_limit) + " bytes");
    }
    return text;
}

} // namespace

Result<std::string> apply(const std::string& source, DocumentKind kind, std::span<const Operation> operations,
                          const EditRules& rules) {
    try {
        return applied(source, kind, operations, rules);
    } catch (const Refused& refused) {
        return Failure{refused.what()};
    }
}

std::string label_of(std::span<const Operation> operations) {
    if (operations.empty())
        return "Change nothing";
    const Operation& first = operations.front();
    std::string label = std::ranges::find(operation_rows, first.what, &OperationRow::what)->verb;
    if (!first.field.empty())
        label += " " + first.field + " of";
    if (first.what == Do::create && first.of.empty())
        label += " slot " + std::to_string(first.to);
    else if (!first.of.empty())
        label += " " + (first.of.size() > 1 ? std::to_string(first.of.size()) + " records" : name_of(first.of.front()));
    return label;
}

} // namespace vcc::kit::edit
