// A screen source as a tree in which every part knows where it is written: the only reader of sources, for packing,
// checking and editing.
#pragma once

#include "vcckit/faults/report.h"
#include "vcckit/faults/source_place.h"

#include "core/result.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vcc::kit {

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
    Place place; ///< for messages: of the value, or of the heading
    Span span;   ///< of values, lists in brackets, tables in braces; else empty
    std::int64_t number = 0;
    bool flag = false;
    std::string text;            ///< UTF-8
    std::vector<Node> items;     ///< of a list; also of [[headings]]
    std::vector<Member> members; ///< in the order of the text

    // Of tables.
    Form form = Form::braces;
    Span heading;          ///< section: its line, with the line's end
    bool on_lines = false; ///< members stand on lines of their own, not between braces
    std::size_t tail = 0;  ///< where the next member goes: behind the last one's line, or the last one's value
    std::string prefix;    ///< dotted: what its members' keys begin with, "text."

    const Member* member(std::string_view key) const;
    const Node* find(std::string_view key) const;
    /// The table under a key; null without one.
    const Node* table(std::string_view key) const;
    bool is_table() const { return kind == Kind::table; }
    bool is_number() const { return kind == Kind::number; }
    bool is_text() const { return kind == Kind::text; }
};

struct Member {
    std::string key;
    Place place;   ///< of the key
    Span whole;    ///< from the key to the end of the value; of a dotted table and of sections empty
    Span key_span; ///< the key with all its parts, as written
    Span line;     ///< on lines: the whole line or lines, with the comment and the line's end
    Node value;
};

/// What reading a source gives: its tree, or else the first mistake.
struct SourceTree {
    std::shared_ptr<const Node> root;
    std::optional<Fault> fault; ///< without a file

    explicit operator bool() const { return root != nullptr; }
    /// "line 3: ..."
    std::string reason() const;
};

/// The trees of the last few texts are kept, because one edit asks for them several times; from any thread.
SourceTree read_source_tree(std::string_view source);

/// The number of the line that a byte is in, from 1.
int line_at(std::string_view source, std::size_t byte);

} // namespace vcc::kit
