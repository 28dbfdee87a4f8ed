#include "vcckit/edit/document_kinds.h"

#include "vcckit/edit/buffer_edit.h"
#include "vcckit/edit/field_edit.h"
#include "vcckit/edit/record_edit.h"
#include "vcckit/edit/source_model.h"
#include "vcckit/edit/window_edit.h"
#include "vcckit/text/latin1.h"

#include "platform/latin1.h"
#include "screen/buffer_list.h"
#include "screen/text_window.h"

#include <algorithm>

namespace vcc::kit::edit {

namespace {

using Do = Operation::Do;

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

std::string change_screen(std::string text, const Operation& operation, const std::string& screen) {
    switch (operation.what) {
    case Do::create:
        return create_record(text, operation);
    case Do::move:
    case Do::resize:
        return move_or_resize(std::move(text), operation);
    case Do::copy:
        return copy_record(text, operation);
    case Do::renumber:
        return renumber_record(text, operation, screen);
    default: // to one address after the other, on what the ones before have left
        for (const Address& address : operation.of)
            text = operation.what == Do::remove  ? remove_record(text, address, screen)
                   : operation.what == Do::split ? split_group(text, address)
                                                 : change_field(text, address, operation);
        return text;
    }
}

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

Description describe_windows(const std::string& text, const std::string&) {
    Description out;
    out.windows = windows_of(text);
    return out;
}

Description describe_buffers(const std::string& text, const std::string&) {
    Description out;
    out.buffers = buffers_of(text);
    return out;
}

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

} // namespace vcc::kit::edit
