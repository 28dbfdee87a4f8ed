// A screen source as a tree in which every part knows the bytes that it is written with.
#pragma once

#include "core/result.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vcc::kit::edit {

/// Bytes of a source.
struct Span {
    std::size_t begin = 0, end = 0;

    bool operator==(const Span&) const = default;
};

struct Member;

/// A value, or a table in one of TOML's ways of writing them.
struct Node {
    enum class Kind { number, text, flag, other, list, table };
    enum class Form {
        braces,  ///< { key = value }
        section, ///< behind a heading of its own
        dotted,  ///< by the parts of its members' keys: text.en = "HQ"
        implied, ///< by the headings of its members only: [style.button] makes style
    };

    Kind kind = Kind::other;
    Span span; ///< of values, lists in brackets, tables in braces; else empty
    std::int64_t number = 0;
    bool flag = false;
    std::string text;        ///< UTF-8
    std::vector<Node> items; ///< of a list; also of [[headings]]
    std::vector<Member> members;

    // Of tables.
    Form form = Form::braces;
    Span heading;          ///< section: its line, with the line's end
    bool on_lines = false; ///< members stand on lines of their own, not between braces
    std::size_t tail = 0;  ///< where the next member goes: behind the last one's line, or the last one's value
    std::string prefix;    ///< dotted: what its members' keys begin with, "text."

    const Node* find(std::string_view key) const;
    bool is_table() const { return kind == Kind::table; }
};

struct Member {
    std::string key;
    Span whole;    ///< from the key to the end of the value; of a dotted table and of sections empty
    Span key_span; ///< the key with all its parts, as written
    Span line;     ///< on lines: the whole line or lines, with the comment and the line's end
    Node value;
};

/// The tree of a source that TOML's own reader accepts. The reason names the line of the first mistake. The trees of
/// the last few texts are kept, because one edit asks for them several times; from any thread.
Result<std::shared_ptr<const Node>> read_source_tree(std::string_view source);

/// The number of the line that a byte is in, from 1.
int line_at(std::string_view source, std::size_t byte);

} // namespace vcc::kit::edit
