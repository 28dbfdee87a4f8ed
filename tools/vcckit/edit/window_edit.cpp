#include "vcckit/check/fixed_slots.h"
#include "vcckit/edit/document_kinds.h"
#include "vcckit/edit/text_edits.h"
#include "vcckit/record/window_fields.h"
#include "vcckit/text/lines.h"

#include "core/geometry.h"
#include "core/installation.h"
#include "core/lines.h"
#include "core/text.h"
#include "screen/text_window.h"

#include <algorithm>
#include <array>

namespace vcc::kit::edit {

namespace {

using nlohmann::json;
using Do = Operation::Do;

const WindowField& field_named(std::string_view name) {
    const auto* const found = std::ranges::find_if(
        window_fields, [&](const WindowField& each) { return each.name == name || each.key == name; });
    return found != std::end(window_fields)
               ? *found
               : throw Refused("there is no field \"" + std::string(name) + "\" of windows");
}

struct TextLine {
    std::string_view text;
    Span span{};                        ///< with its end
    const WindowField* field = nullptr; ///< null: a heading or a comment, also what the program passes over
    int window = 0;                     ///< that it belongs to; -1 none

    explicit TextLine(std::string_view line) : text(line) {
        field = std::ranges::find_if(window_fields, [&](const auto& each) { return line.starts_with(each.key); });
        if (is_title() && line.find_first_of("+#xy") == 0)
            field = nullptr;
    }

    bool is_heading() const { return text.starts_with('+'); }
    bool is_comment() const { return !field && !is_heading(); }
    bool is_title() const { return field && field->key.empty(); }

    /// Bytes before the number of a field, or of a heading: "+3".
    std::size_t key() const { return field ? field->key.size() : 1; }
    int number() const { return to_number(text.substr(key())); }

    /// What is written for the number, as the program reads it: what stands before and behind it stays.
    Span digits() const {
        const std::size_t begin = std::min(text.find_first_not_of(" \t", key()), text.size());
        std::size_t end = begin + (begin < text.size() && (text[begin] == '-' || text[begin] == '+') ? 1 : 0);
        end = std::min(text.find_first_not_of("0123456789", end), text.size());
        return {span.begin + begin, span.begin + end};
    }
};

constexpr int no_window = -1;

/// The lines up to where the program ends its reading.
std::vector<TextLine> window_lines(std::string_view text) {
    std::vector<TextLine> lines;
    int window = 0;
    std::size_t at = 0;
    for (const std::string_view whole : lines_with_ends(text)) {
        TextLine line(whole.substr(0, whole.find_last_not_of("\r\n") + 1));
        line.span = {at, at + whole.size()};
        if (line.is_heading()) {
            if (line.number() >= text_window_count)
                break;
            window = std::max(line.number(), no_window);
        }
        line.window = window;
        lines.push_back(line);
        at = line.span.end;
    }
    return lines;
}

/// One window with the lines that belong to it.
class WindowChange {
public:
    WindowChange(std::string_view text, int number)
        : text_(text), number_(number), edits_(text), lines_(window_lines(text)) {
        for (const TextLine& line : lines_)
            if (line.window == number && !line.is_comment() && !is_blank(line.text))
                last_ = &line;
    }

    bool is_there() const { return last_ != nullptr; }
    std::string result() const { return edits_.result(); }

    int value(const WindowField& field) const {
        const TextLine* const line = line_of(field);
        return line ? line->number() : 0;
    }

    void set(const WindowField& field, std::int64_t number) {
        const TextLine* const line = line_of(field);
        if (!line)
            add(std::string(field.key) + std::to_string(number));
        else if (line->number() != number)
            edits_.replace(line->digits(), std::to_string(number));
    }

    void set_title(const std::string& title) {
        if (title.find_first_of("\r\n") != std::string::npos || title.size() >= line_limit)
            throw Refused("a title is one line of less than " + std::to_string(line_limit) + " characters");
        if (!TextLine(title).is_title())
            throw Refused("a title cannot begin with \"" + title.substr(0, 1) + "\": that is a key of these files");
        const WindowField& field = field_named("title");
        const TextLine* const line = line_of(field);
        if (is_blank(title))
            unset(field);
        else if (!line)
            add(title);
        else if (line->text != title)
            edits_.replace({line->span.begin, line->span.begin + line->text.size()}, title);
    }

    /// Takes all lines of a field away; false when there is none.
    bool unset(const WindowField& field) {
        bool found = false;
        for (const TextLine& line : lines_)
            if (line.window == number_ && line.field == &field) {
                edits_.replace(line.span, "");
                found = true;
            }
        return found;
    }

    void renumber(int to) {
        for (const TextLine& line : lines_)
            if (line.is_heading() && line.window == number_)
                edits_.replace(line.digits(), std::to_string(to));
    }

    /// Its lines without comments, under another number.
    std::string copied(int to) const {
        const std::string end(line_end_of(text_));
        std::string out = "+" + std::to_string(to) + end;
        for (const TextLine& line : lines_)
            if (line.window == number_ && line.field)
                out += std::string(line.text) + end;
        return out;
    }

    /// With the comment above it, but not with the one above the next window.
    void remove() {
        for (std::size_t i = 0; i < lines_.size(); ++i) {
            if (!lines_[i].is_heading() || lines_[i].window != number_)
                continue;
            std::size_t first = i, end = i + 1;
            while (first > 0 && lines_[first - 1].is_comment() && lines_[first - 1].text != "#")
                --first;
            for (std::size_t next = end; next < lines_.size() && !lines_[next].is_heading(); ++next)
                if (!lines_[next].is_comment())
                    end = next + 1;
            const bool parted_above = first > 0 && lines_[first - 1].text == "#";
            const bool parted_below = end == lines_.size() || lines_[end].text == "#";
            if (parted_above && parted_below)
                --first;
            edits_.replace({lines_[first].span.begin, lines_[end - 1].span.end}, "");
        }
    }

private:
    /// The line that counts.
    const TextLine* line_of(const WindowField& field) const {
        const TextLine* found = nullptr;
        for (const TextLine& line : lines_)
            if (line.window == number_ && line.field == &field)
                found = &line;
        return found;
    }

    void add(const std::string& line) {
        add_lines(edits_, last_ ? last_->span.end : text_.size(), line + std::string(line_end_of(text_)));
    }

    std::string_view text_;
    int number_;
    TextEdits edits_;
    std::vector<TextLine> lines_;
    const TextLine* last_ = nullptr; ///< the window's last line that means something
};

void set(WindowChange& change, const Operation& operation) {
    const WindowField& field = field_named(operation.field);
    const std::string name(field.name);
    const auto* const word = std::get_if<std::string>(&operation.value);
    if (field.key.empty())
        return word ? change.set_title(*word) : throw Refused("a title must be a text");
    std::int64_t number = 0;
    if (const auto* const given = std::get_if<std::int64_t>(&operation.value))
        number = *given;
    else if (const auto named = word ? number_of_name(field.meaning, *word) : std::nullopt)
        number = *named;
    else
        throw Refused(name + " must be a number" +
                      (word ? ": there is no " + std::string(meaning_word(field.meaning)) + " \"" + *word + "\"" : ""));
    if (number < -coordinate_limit || number > coordinate_limit)
        throw Refused(name + " must be at most " + std::to_string(coordinate_limit));
    change.set(field, number);
}

void unset(WindowChange& change, const Operation& operation) {
    const WindowField& field = field_named(operation.field);
    if (field.key == "-")
        throw Refused("every window needs its style");
    if (!change.unset(field))
        throw Refused(operation.field + " is not written there");
}

void move_or_resize(WindowChange& change, const Operation& operation) {
    const std::pair<const char*, int> edges[] = {
        {"left", operation.dx}, {"top", operation.dy}, {"right", operation.dx}, {"bottom", operation.dy}};
    std::array<std::int64_t, std::size(edges)> places{};
    for (std::size_t i = 0; i < places.size(); ++i) {
        const bool first = i < 2;
        const int distance = first && operation.what == Do::resize ? 0 : edges[i].second;
        places[i] = std::int64_t{change.value(field_named(edges[i].first))} + distance;
        if (places[i] < -coordinate_limit || places[i] > coordinate_limit)
            throw Refused(std::string(edges[i].first) + " would be " + std::to_string(places[i]));
        if (!first && places[i] < places[i - 2])
            throw Refused("the window would end before it begins");
        if (distance != 0)
            change.set(field_named(edges[i].first), places[i]);
    }
}

void expect_free(std::string_view text, int number) {
    if (number < 0 || number >= text_window_count)
        throw Refused("windows are numbered 0 to " + std::to_string(text_window_count - 1));
    if (WindowChange(text, number).is_there())
        throw Refused("there is a window " + std::to_string(number) + " already");
}

/// Behind all windows that the program reads.
std::string with_window(std::string_view text, std::string lines) {
    const std::vector<TextLine> there = window_lines(text);
    TextEdits edits(text);
    add_lines(edits, there.empty() ? 0 : there.back().span.end, std::move(lines));
    return edits.result();
}

std::string create_window(const std::string& text, const Operation& operation) {
    expect_free(text, operation.to);
    const std::string end(line_end_of(text));
    std::string lines = "+" + std::to_string(operation.to) + end;
    bool has_style = false;
    for (const TextLine& line : window_lines(operation.text)) {
        if (line.is_heading())
            throw Refused("the lines of a window have no other window in them");
        has_style = has_style || line.text.starts_with('-');
        lines += std::string(line.text) + end;
    }
    return with_window(text, lines + (has_style ? "" : "-0" + end));
}

std::string change_window(const std::string& text, const Address& address, const Operation& operation) {
    if (address.of != Address::Of::window)
        throw Refused("a file of text windows has nothing but windows");
    WindowChange change(text, address.index);
    if (!change.is_there())
        throw Refused("there is no window " + std::to_string(address.index));
    const std::string role = role_of_fixed_window(address.index);
    if (!role.empty() && (operation.what == Do::remove || operation.what == Do::renumber))
        throw Refused("the program knows this window by its number: window " + std::to_string(address.index) +
                      " is the " + role);
    if (operation.what == Do::copy || operation.what == Do::renumber)
        expect_free(text, operation.to);
    switch (operation.what) {
    case Do::set:
        set(change, operation);
        break;
    case Do::unset:
        unset(change, operation);
        break;
    case Do::move:
    case Do::resize:
        move_or_resize(change, operation);
        break;
    case Do::copy:
        return with_window(text, change.copied(operation.to));
    case Do::remove:
        change.remove();
        break;
    case Do::renumber:
        change.renumber(operation.to);
        break;
    default:
        throw Refused("windows are in no groups");
    }
    return change.result();
}

} // namespace

std::string change_windows(std::string text, const Operation& operation, const std::string&) {
    if (operation.what == Do::create)
        return create_window(text, operation);
    for (const Address& address : operation.of)
        text = change_window(text, address, operation);
    return text;
}

Description describe_windows(const std::string& text, const std::string&) {
    Description out;
    for (const TextLine& line : window_lines(text)) {
        const bool blank = line.is_title() && is_blank(line.text);
        if (line.window == no_window || line.is_comment())
            continue;
        auto window =
            std::ranges::find_if(out.windows, [&](const json& each) { return each["number"] == line.window; });
        if (window == out.windows.end()) {
            if (blank)
                continue;
            out.windows.push_back({{"number", line.window},
                                   {"line", line_at(text, line.span.begin)},
                                   {"protected", text_or_null(role_of_fixed_window(line.window))},
                                   {"values", json::object()}});
            window = std::prev(out.windows.end());
        }
        json& values = (*window)["values"];
        if (line.field && !line.is_title())
            values[line.field->name] = line.number();
        else if (line.is_title() && !blank)
            values["title"] = line.text;
        else
            values.erase("title"); // a heading begins anew, and a blank line is an empty title
    }
    return out;
}

} // namespace vcc::kit::edit
