#include "vcckit/edit/document_kinds.h"

#include "vcckit/edit/source_model.h"
#include "vcckit/text/latin1.h"

#include "platform/latin1.h"
#include "screen/buffer_list.h"
#include "screen/text_window.h"

#include <algorithm>

namespace vcc::kit::edit {

namespace {

std::string fault_of_screen(const std::string& text) {
    const auto tree = read_source_tree(text);
    return tree ? "" : tree.reason();
}

std::string fault_of_windows(const std::string& text) {
    std::array<TextWindow, text_window_count> windows;
    return read_text_windows(text, windows) > 0 ? "" : "describes no window";
}

std::string fault_of_buffers(const std::string& text) {
    return read_buffer_list(text).pictures.empty() ? "names no picture" : "";
}

/// Texts read again for every part of every operation: bytes times parts.
constexpr std::size_t work_limit = 512u << 20;

constexpr KindRow kinds[] = {
    {"screen", ".toml", false, true, change_screen, describe_screen, fault_of_screen},
    {"windows", ".tw", false, false, change_windows, describe_windows, fault_of_windows, FaultCode::window_missing,
     "describe the windows; each has a \"-\" line"},
    {"buffers", ".buf", true, false, change_buffers, describe_buffers, fault_of_buffers, FaultCode::buffer_missing,
     "write \"+0\", and the picture that screens are drawn into in the next line"},
};

} // namespace

const KindRow& row_of(DocumentKind kind) {
    return kinds[static_cast<std::size_t>(kind)];
}

DocumentKind kind_of_file(std::string_view file) {
    const auto* const row =
        std::ranges::find_if(kinds, [&](const KindRow& each) { return file.ends_with(each.ending); });
    return static_cast<DocumentKind>(row == std::end(kinds) ? 0 : row - kinds);
}

std::string text_of_bytes(const std::string& bytes, DocumentKind kind) {
    return row_of(kind).packed ? bytes : platform::utf8_from_latin1(bytes);
}

std::optional<std::string> bytes_of_text(const std::string& text, DocumentKind kind) {
    return row_of(kind).packed ? text : to_latin1(text);
}

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
        if (operation.what == Operation::Do::replace_text) {
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
    if (first.what == Operation::Do::create && first.of.empty())
        label += " slot " + std::to_string(first.to);
    else if (!first.of.empty())
        label += " " + (first.of.size() > 1 ? std::to_string(first.of.size()) + " records" : name_of(first.of.front()));
    return label;
}

} // namespace vcc::kit::edit
