#include "vcckit/edit/source_edit.h"

#include "vcckit/edit/field_edit.h"
#include "vcckit/edit/place_edit.h"
#include "vcckit/edit/record_edit.h"
#include "vcckit/edit/source_model.h"
#include "vcckit/edit/window_edit.h"

#include <algorithm>
#include <set>

namespace vcc::kit::edit {

namespace {

using Do = Operation::Do;

/// Texts read again for every part of every operation: bytes times parts.
constexpr std::size_t work_limit = 512u << 20;

Result<std::optional<std::size_t>> language_of(const std::string& code) {
    if (code.empty())
        return std::optional<std::size_t>();
    for (std::size_t i = 0; i < languages.size(); ++i)
        if (languages[i].code == code)
            return std::optional(i);
    return Failure{"\"" + code + "\" is no language: there are en and de"};
}

Result<std::string> change_field(const std::string& text, const Address& address, const Operation& operation) {
    const auto language = language_of(operation.language);
    auto at = language ? open(text, address) : Result<Opened>(Failure{language.reason()});
    if (!at)
        return Failure{at.reason()};
    std::string reason = operation.what == Do::set ? set_field(*at, operation.field, *language, operation.value)
                                                   : unset_field(*at, operation.field, *language);
    return reason.empty() ? Result<std::string>(at->edits.result()) : Failure{std::move(reason)};
}

/// What an operation does to one address, on what the ones before have left.
Result<std::string> run_part(const std::string& text, const Address& address, const Operation& operation,
                             DocumentKind kind, const EditRules& rules) {
    if (kind == DocumentKind::windows)
        return change_window(text, address, operation);
    if (operation.what == Do::remove)
        return remove_record(text, address, rules);
    return operation.what == Do::split ? split_group(text, address) : change_field(text, address, operation);
}

Result<std::string> run(std::string text, DocumentKind kind, const Operation& operation, const EditRules& rules) {
    const bool screen = kind == DocumentKind::screen;
    switch (operation.what) {
    case Do::move:
    case Do::resize:
        if (screen)
            return move_or_resize(std::move(text), operation);
        break;
    case Do::create:
        return screen ? create_record(text, operation) : create_window(text, operation);
    case Do::copy:
        if (screen)
            return copy_record(text, operation);
        break;
    case Do::renumber:
        if (screen)
            return renumber_record(text, operation, rules);
        break;
    case Do::replace_text:
        return operation.text;
    case Do::set:
    case Do::unset:
    case Do::remove:
    case Do::split:
        break;
    }
    for (const Address& address : operation.of) {
        auto next = run_part(text, address, operation, kind, rules);
        if (!next)
            return next;
        text = std::move(*next);
    }
    return text;
}

} // namespace

Result<std::string> apply(const std::string& source, DocumentKind kind, std::span<const Operation> operations,
                          const EditRules& rules) {
    std::size_t parts = 0;
    for (const Operation& operation : operations)
        parts += std::max<std::size_t>(1, operation.of.size());
    if (parts > operation_limit)
        return Failure{"more than " + std::to_string(operation_limit) + " operations at once"};
    if (parts * source.size() > work_limit)
        return Failure{"too many operations at once for a source of this size"};
    std::string text = source;
    for (const Operation& operation : operations) {
        auto next = run(text, kind, operation, rules);
        if (!next)
            return next;
        if (kind == DocumentKind::screen && operation.what != Do::replace_text && *next != text)
            if (const auto tree = read_source_tree(*next); !tree)
                return Failure{"the change does not fit into the source as it is written: " + tree.reason()};
        text = std::move(*next);
        if (text.size() > document_limit)
            return Failure{"the text would be longer than " + std::to_string(document_limit) + " bytes"};
    }
    return text;
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
