// What an editor asks for: changes of a document in the terms of screens, not of texts.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

namespace vcc::kit::edit {

/// Bounds of what comes from outside.
inline constexpr std::size_t document_limit = 1u << 20; ///< bytes of a source
inline constexpr std::size_t operation_limit = 10'000;  ///< of one edit

enum class DocumentKind { screen, windows, buffers };

/// Why an operation changes nothing, or an installation cannot be opened: thrown by what finds it out.
struct Refused : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The part of a document that an operation is about.
struct Address {
    enum class Of { slot, toggle, style, window, buffer };
    Of of = Of::slot;
    int index = 0;       ///< of the slot, toggle record, window or buffer
    std::string style{}; ///< its name
    std::string look{};  ///< of a slot or style: "", "highlight" or "pressed"

    bool operator==(const Address&) const = default;
};

/// A number; a flag; or a text in UTF-8, which names a number in a number field.
using Value = std::variant<std::int64_t, bool, std::string>;

struct Operation {
    enum class Do { set, unset, move, resize, create, copy, remove, renumber, split, replace_text };
    Do what = Do::set;
    std::vector<Address> of{};
    std::string field{}; ///< set, unset: of the record, or "style", "highlight", "pressed", "repeat.count" ...
    std::optional<std::size_t> language{}; ///< set, unset: by its number in vcc::languages; nothing for every language
    Value value{};                         ///< set
    int dx = 0, dy = 0;                    ///< move, resize: in the units that place the record, pixels or cells
    int to = 0;                            ///< create, copy, renumber: the new index
    std::string text{}; ///< create: the lines of the new table, the picture of a buffer; replace_text: the new source
    std::optional<std::string>
        base{}; ///< replace_text: what the new source was made from, when that may be an older one
};

/// Operations on a document of this revision, as one step.
struct EditRequest {
    std::string name;
    std::int64_t revision = 0;
    std::string label{};     ///< of the step; empty: that of its operations
    std::string merge_key{}; ///< not empty: steps one after the other with the same are undone together
    std::vector<Operation> operations{};
};

/// What an operation is called, by pages and in the menu, and what it must have.
struct OperationRow {
    Operation::Do what;
    const char *word, *verb;
    bool of, field, value, distance, to, text;
};
inline constexpr OperationRow operation_rows[] = {
    {Operation::Do::set, "set", "Set", true, true, true, false, false, false},
    {Operation::Do::unset, "unset", "Unset", true, true, false, false, false, false},
    {Operation::Do::move, "move", "Move", true, false, false, true, false, false},
    {Operation::Do::resize, "resize", "Resize", true, false, false, true, false, false},
    {Operation::Do::create, "create", "New", false, false, false, false, true, true},
    {Operation::Do::copy, "copy", "Copy", true, false, false, false, true, false},
    {Operation::Do::remove, "remove", "Delete", true, false, false, false, false, false},
    {Operation::Do::renumber, "renumber", "Renumber", true, false, false, false, true, false},
    {Operation::Do::split, "split", "Write out", true, false, false, false, false, false},
    {Operation::Do::replace_text, "replace_text", "Change text", false, false, false, false, false, true},
};

} // namespace vcc::kit::edit
