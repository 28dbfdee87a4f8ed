#include "vcckit/edit/source_tree.h"

#include "vcckit/source/source_text.h"
#include "vcckit/source/source_values.h"

#include "platform/latin1.h"

#include <algorithm>
#include <charconv>
#include <deque>
#include <mutex>
#include <utility>

namespace vcc::kit::edit {

namespace {

using Kind = Node::Kind;
using Form = Node::Form;

constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
constexpr int depth_limit = 300; ///< above what TOML's reader takes

/// Reads what the other reader has accepted, so it only has to find the ends of things; on anything else it fails.
class TreeReader {
public:
    explicit TreeReader(std::string_view source) : source_(source) {}

    bool read(Node& root) {
        root.kind = Kind::table;
        root.form = Form::section;
        root.on_lines = true;
        if (source_.starts_with(byte_order_mark))
            at_ = byte_order_mark.size();
        root.tail = at_;
        current_ = &root;
        while (sound_ && at_ < source_.size()) {
            line_ = at_;
            skip_blanks();
            if (peek() == '[')
                heading(root);
            else if (peek() != '#' && peek() != '\n' && peek() != '\r' && at_ < source_.size())
                expression(*current_, true, 0);
            else
                end_line();
        }
        return sound_;
    }

private:
    char peek(std::size_t ahead = 0) const { return at_ + ahead < source_.size() ? source_[at_ + ahead] : '\0'; }

    bool fail() { return sound_ = false; }

    void skip_blanks() {
        while (peek() == ' ' || peek() == '\t')
            ++at_;
    }

    /// Between the parts of lists and braces: blanks, ends of lines, comments.
    void skip_space() {
        for (;;) {
            skip_blanks();
            if (peek() == '#')
                at_ = std::min(source_.find('\n', at_), source_.size());
            else if (at_ < source_.size() && (peek() == '\n' || peek() == '\r'))
                ++at_;
            else
                return;
        }
    }

    /// To behind the line's end; the rest of the line holds nothing but a comment.
    void end_line() {
        const std::size_t end = source_.find('\n', at_);
        at_ = end == std::string_view::npos ? source_.size() : end + 1;
    }

    struct Part {
        std::string name;
        std::size_t begin = 0;
    };

    /// The parts of a key, up to the character behind it.
    std::vector<Part> key() {
        std::vector<Part> parts;
        do {
            if (!parts.empty())
                ++at_;
            skip_blanks();
            Part part{"", at_};
            if (peek() == '"' || peek() == '\'') {
                Node text;
                quoted(text);
                part.name = std::move(text.text);
            } else {
                const std::size_t end = source_.find_first_of(" \t.=]\n\r", at_);
                part.name = source_.substr(at_, end - at_);
                at_ = std::min(end, source_.size());
                if (part.name.empty())
                    fail();
            }
            parts.push_back(std::move(part));
            key_end_ = at_;
            skip_blanks();
        } while (sound_ && peek() == '.');
        return parts;
    }

    static Node* member_of(Node& table, std::string_view name) {
        const auto found = std::ranges::find(table.members, name, &Member::key);
        return found == table.members.end() ? nullptr : &found->value;
    }

    static Node& add_table(Node& table, const std::string& name, Form form) {
        Member member;
        member.key = name;
        member.value.kind = Kind::table;
        member.value.form = form;
        table.members.push_back(std::move(member));
        return table.members.back().value;
    }

    /// [style.button], [[slot]]
    void heading(Node& root) {
        const bool many = peek(1) == '[';
        at_ += many ? 2 : 1;
        const std::vector<Part> parts = key();
        end_line();
        Node* table = &root;
        for (std::size_t i = 0; sound_ && i < parts.size(); ++i) {
            const bool last = i + 1 == parts.size();
            Node* next = member_of(*table, parts[i].name);
            if (!next) {
                next = &add_table(*table, parts[i].name, Form::implied);
                if (last && many)
                    next->kind = Kind::list;
            }
            if (next->kind == Kind::list) {
                if (last && many)
                    next->items.emplace_back();
                if (next->items.empty()) {
                    fail();
                    return;
                }
                next = &next->items.back();
            }
            table = next;
        }
        table->kind = Kind::table;
        table->form = Form::section;
        table->on_lines = true;
        table->heading = {line_, at_};
        table->tail = at_;
        current_ = table;
    }

    /// A key and its value: on a line, or between braces.
    void expression(Node& home, bool on_line, int depth) {
        const std::size_t begin = at_;
        const std::vector<Part> parts = key();
        const Span key_span{begin, key_end_};
        if (peek() != '=') {
            fail();
            return;
        }
        ++at_;
        on_line ? skip_blanks() : skip_space();
        Node value = this->value(depth + 1);
        if (!sound_)
            return;
        const std::size_t value_end = at_;
        if (on_line)
            end_line();
        const std::size_t tail = on_line ? at_ : value_end;
        Node* table = &home;
        table->tail = tail;
        for (std::size_t i = 0; i + 1 < parts.size(); ++i) {
            Node* next = member_of(*table, parts[i].name);
            if (!next) {
                next = &add_table(*table, parts[i].name, Form::dotted);
                next->on_lines = on_line;
                next->prefix = source_.substr(begin, parts[i + 1].begin - begin);
            }
            if (!next->is_table()) {
                fail();
                return;
            }
            table = next;
            table->tail = tail;
        }
        Member member{parts.back().name, {begin, value_end}, key_span, {}, std::move(value)};
        if (on_line)
            member.line = {line_, tail};
        table->members.push_back(std::move(member));
    }

    Node value(int depth) {
        Node node;
        node.span.begin = at_;
        if (depth > depth_limit)
            fail();
        else if (peek() == '"' || peek() == '\'')
            quoted(node);
        else if (peek() == '[')
            list(node, depth);
        else if (peek() == '{')
            braces(node, depth);
        else
            word(node);
        node.span.end = at_;
        return node;
    }

    void list(Node& node, int depth) {
        node.kind = Kind::list;
        ++at_;
        for (skip_space(); sound_ && peek() != ']'; skip_space()) {
            node.items.push_back(value(depth + 1));
            skip_space();
            if (peek() == ',')
                ++at_;
            else if (peek() != ']')
                fail();
        }
        ++at_;
    }

    void braces(Node& node, int depth) {
        node.kind = Kind::table;
        node.form = Form::braces;
        node.tail = ++at_;
        for (skip_space(); sound_ && peek() != '}'; skip_space()) {
            expression(node, false, depth);
            skip_space();
            if (peek() == ',')
                ++at_;
            else if (peek() != '}')
                fail();
        }
        ++at_;
    }

    void word(Node& node) {
        const std::size_t end = std::min(source_.find_first_of(",]}#\n\r", at_), source_.size());
        std::string_view word = source_.substr(at_, end - at_);
        word = word.substr(0, word.find_last_not_of(" \t") + 1);
        if (word.empty()) {
            fail();
            return;
        }
        at_ += word.size();
        if (word == "true" || word == "false") {
            node.kind = Kind::flag;
            node.flag = word == "true";
        } else {
            integer(node, word);
        }
    }

    /// What is no integer (a date, a fraction) stays Kind::other.
    static void integer(Node& node, std::string_view word) {
        std::string digits(word);
        std::erase(digits, '_');
        int base = 10;
        if (digits.starts_with("0x") || digits.starts_with("0o") || digits.starts_with("0b")) {
            base = digits[1] == 'x' ? 16 : digits[1] == 'o' ? 8 : 2;
            digits.erase(0, 2);
        } else if (digits.starts_with('+')) {
            digits.erase(0, 1);
        }
        const char* const end = digits.data() + digits.size();
        const auto [stop, error] = std::from_chars(digits.data(), end, node.number, base);
        if (error == std::errc() && stop == end)
            node.kind = Kind::number;
    }

    void quoted(Node& node) {
        node.kind = Kind::text;
        const char quote = peek();
        const bool is_long = peek(1) == quote && peek(2) == quote;
        at_ += is_long ? 3 : 1;
        if (is_long)
            skip_line_end();
        while (at_ < source_.size()) {
            const char c = peek();
            if (c == quote && !is_long) {
                ++at_;
                return;
            }
            if (c == quote && peek(1) == quote && peek(2) == quote) {
                for (at_ += 3; peek() == quote; ++at_) // up to two more belong to the text
                    node.text += quote;
                return;
            }
            if (c == '\\' && quote == '"')
                escape(node.text);
            else
                node.text += source_[at_++];
        }
        fail();
    }

    void skip_line_end() {
        if (peek() == '\r' && peek(1) == '\n')
            ++at_;
        if (peek() == '\n')
            ++at_;
    }

    void escape(std::string& text) {
        constexpr std::string_view letters = "btnfr\"\\", meanings = "\b\t\n\f\r\"\\";
        const char c = peek(1);
        at_ += 2;
        if (const std::size_t found = letters.find(c); found != std::string_view::npos) {
            text += meanings[found];
        } else if (c == 'u' || c == 'U') {
            const std::string_view digits = source_.substr(std::min(at_, source_.size()), c == 'u' ? 4 : 8);
            std::uint32_t code = 0;
            std::from_chars(digits.data(), digits.data() + digits.size(), code, 16);
            if (code < 0x10000)
                platform::append_utf8(text, static_cast<char32_t>(code));
            else
                text += "\xF0\x9F\xBF\xBF"; // no character of the program; it only has to be one of four bytes
            at_ += digits.size();
        } else { // the line's end: goes on at the next character
            --at_;
            skip_space_of_text();
        }
    }

    void skip_space_of_text() {
        while (at_ < source_.size() && (peek() == ' ' || peek() == '\t' || peek() == '\r' || peek() == '\n'))
            ++at_;
    }

    std::string_view source_;
    std::size_t at_ = 0, line_ = 0, key_end_ = 0;
    bool sound_ = true;
    Node* current_ = nullptr; ///< the table that lines belong to; nothing above it grows before the next heading
};

std::string at_line(int line, std::string_view problem) {
    return "line " + std::to_string(line) + ": " + std::string(problem);
}

} // namespace

const Node* Node::find(std::string_view key) const {
    const auto found = std::ranges::find(members, key, &Member::key);
    return found == members.end() ? nullptr : &found->value;
}

Result<std::shared_ptr<const Node>> read_source_tree(std::string_view source) {
    static std::mutex mutex;
    static std::deque<std::pair<std::string, std::shared_ptr<const Node>>> kept;
    constexpr std::size_t most_kept = 4;
    const std::lock_guard held(mutex);
    if (const auto known =
            std::ranges::find(kept, source, [](const auto& each) -> std::string_view { return each.first; });
        known != kept.end())
        return known->second;
    if (const auto fault = fault_of_source_text(source))
        return Failure{at_line(fault->line, fault->problem)};
    if (const toml::parse_result parsed = toml::parse(source); !parsed)
        return Failure{at_line(place_of(parsed.error().source()).line, parsed.error().description())};
    auto root = std::make_shared<Node>();
    if (!TreeReader(source).read(*root))
        return Failure{"the source is written in a way that cannot be edited part by part"};
    kept.emplace_front(source, root);
    kept.resize(std::min(kept.size(), most_kept));
    return std::shared_ptr<const Node>(std::move(root));
}

int line_at(std::string_view source, std::size_t byte) {
    return 1 + static_cast<int>(std::ranges::count(source.substr(0, byte), '\n'));
}

} // namespace vcc::kit::edit
