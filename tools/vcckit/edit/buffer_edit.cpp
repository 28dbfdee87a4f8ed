#include "vcckit/edit/document_kinds.h"
#include "vcckit/edit/source_model.h"
#include "vcckit/edit/text_edits.h"
#include "vcckit/record/names.h"
#include "vcckit/text/lines.h"

#include "core/installation.h"
#include "core/lines.h"
#include "core/text.h"
#include "screen/buffer_list.h"

#include <algorithm>

namespace vcc::kit::edit {

namespace {

using Do = Operation::Do;

/// Refuses a text that cannot stand for a picture in the list.
void expect_picture(const std::string& picture) {
    if (is_blank(picture) || picture.find_first_of("\r\n") != std::string::npos || picture.size() >= line_limit)
        throw Refused("a picture is named in one line of less than " + std::to_string(line_limit) + " characters");
    if (std::string_view("+*#").find(picture.front()) != std::string_view::npos)
        throw Refused("a picture's name cannot begin with \"" + picture.substr(0, 1) + "\": that is a key of the list");
}

std::string with_buffer(const std::string& text, int number, const std::string& picture) {
    expect_picture(picture);
    const BufferList list = read_buffer_list(text);
    if (number < 0 || number >= window_copy_buffer)
        throw Refused("buffers for pictures are 0 to " + std::to_string(window_copy_buffer - 1));
    if (const auto there = std::ranges::find(list.pictures, number, &ListedPicture::buffer);
        there != list.pictures.end())
        throw Refused("buffer " + std::to_string(number) + " holds " + there->path + " already");
    if (list.unknown)
        throw Refused("line " + std::to_string(list.unknown->line) + " names no buffer: the list ends there");
    TextEdits edits(text);
    const std::string end(line_end_of(text));
    add_lines(edits, text.size(), "+" + std::to_string(number) + end + picture + end);
    return edits.result();
}

/// Takes a picture out with the "+" line and the comment above it.
std::string without(const std::string& text, const std::vector<std::string_view>& lines, std::size_t picture) {
    std::size_t first = picture;
    if (first > 0 && lines[first - 1].starts_with('+'))
        --first;
    while (first > 0 && lines[first - 1].starts_with('#') &&
           lines[first - 1].find_first_not_of("#\r\n") != std::string_view::npos)
        --first;
    const auto begin = static_cast<std::size_t>(lines[first].data() - text.data());
    const auto end = static_cast<std::size_t>(lines[picture].data() - text.data()) + lines[picture].size();
    return std::string(text).erase(begin, end - begin);
}

std::string change_buffer(const std::string& text, const Address& address, const Operation& operation) {
    const BufferList list = read_buffer_list(text);
    const auto listed = std::find_if(list.pictures.rbegin(), list.pictures.rend(), // the last one counts
                                     [&](const ListedPicture& each) { return each.buffer == address.index; });
    if (address.of != Address::Of::buffer || listed == list.pictures.rend())
        throw Refused("the list has no " + name_of(address));
    const std::vector<std::string_view> lines = lines_with_ends(text);
    const auto at = static_cast<std::size_t>(listed->line) - 1;
    if (at >= lines.size() || !lines[at].starts_with(listed->path))
        throw Refused("the list has a line that is too long");
    if (operation.what == Do::set && operation.field == "picture") {
        const auto* const picture = std::get_if<std::string>(&operation.value);
        expect_picture(picture ? *picture : "");
        const auto begin = static_cast<std::size_t>(lines[at].data() - text.data());
        return std::string(text).replace(begin, listed->path.size(), *picture);
    }
    if (operation.what != Do::remove)
        throw Refused("buffers are made, get another picture, and are taken away");
    if (const auto role = name_of_number(Meaning::buffer, address.index))
        throw Refused("the program knows this buffer by its number: it is the " + *role);
    return without(text, lines, at);
}

} // namespace

Description describe_buffers(const std::string& text, const std::string&) {
    Description out;
    const std::vector<ListedPicture> pictures = read_buffer_list(text).pictures;
    for (auto each = pictures.begin(); each != pictures.end(); ++each)
        if (std::find_if(each + 1, pictures.end(), // of several the last one counts
                         [&](const ListedPicture& other) { return other.buffer == each->buffer; }) == pictures.end())
            out.buffers.push_back(
                {{"number", each->buffer},
                 {"line", each->line},
                 {"protected", text_or_null(name_of_number(Meaning::buffer, each->buffer).value_or(""))},
                 {"values", {{"picture", each->path}}}});
    return out;
}

std::string change_buffers(std::string text, const Operation& operation, const std::string&) {
    if (operation.what == Do::create)
        return with_buffer(text, operation.to, operation.text);
    for (const Address& address : operation.of)
        text = change_buffer(text, address, operation);
    return text;
}

} // namespace vcc::kit::edit
