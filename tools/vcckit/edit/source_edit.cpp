#include "vcckit/edit/source_edit.h"

#include "vcckit/edit/document_kinds.h"
#include "vcckit/edit/source_model.h"

#include <algorithm>

namespace vcc::kit::edit {

namespace {

using Do = Operation::Do;

/// Texts read again for every part of every operation: bytes times parts.
constexpr std::size_t work_limit = 512u << 20;

} // namespace

std::string apply(std::string text, DocumentKind kind, std::span<const Operation> operations,
                  const std::string& screen) {
    std::size_t parts = 0;
    for (const Operation& operation : operations)
        parts += std::max<std::size_t>(1, operation.of.size());
    if (parts > operation_limit)
        throw Refused("more than " + std::to_string(operation_limit) + " operations at once");
    if (parts * text.size() > work_limit)
        throw Refused("too many operations at once for a source of this size");
    for (const Operation& operation : operations) {
        if (operation.what == Do::replace_text) {
            text = operation.text;
        } else {
            std::string next = row_of(kind).change(text, operation, screen);
            if (const std::string fault = next == text ? "" : row_of(kind).fault(next); !fault.empty())
                throw Refused("the change does not fit into the source as it is written: " + fault);
            text = std::move(next);
        }
        if (text.size() > document_limit)
            throw Refused("the text would be longer than " + std::to_string(document_limit) + " bytes");
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
