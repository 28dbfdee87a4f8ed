// What people are told of the fields of records, sources and text windows: the one table behind docs/formats.md and the
// screen editor.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace vcc::kit {

enum class FieldKind { number, text, flag, choice };

struct FieldHelp {
    std::string_view name;
    FieldKind kind = FieldKind::number;
    std::string_view unit{};       ///< "pixels"; empty: none
    std::int64_t min = 0, max = 0; ///< of a number; both 0: any of 32 bits
    std::string_view help{};
};

/// The fields of a record, in its order.
std::span<const FieldHelp> record_field_help();

/// What only sources have.
std::span<const FieldHelp> source_field_help();

/// The lines of a text window, by their letters; and what the editor calls them.
struct WindowFieldHelp {
    std::string_view key;
    FieldHelp field;
};
std::span<const WindowFieldHelp> window_field_help();

std::string_view word_of(FieldKind kind);

/// The table of a record's fields as docs/formats.md has it.
std::string field_table();

} // namespace vcc::kit
