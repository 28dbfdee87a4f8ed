// The fields of records and of their sources: one row each, from which reader, writer, editor, schema and documents
// take what a field is called, how it is written, where it is stored, which range it has and what it is for.
#pragma once

#include "screen/slot.h"
#include "vcckit/record/names.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vcc::kit {

/// How a source writes a field.
enum class FieldForm {
    number, ///< or a name; by language, in lists
    text,   ///< by language, in lists
    word,   ///< `align`: by language, in lists
    pair,   ///< `padding`: one number or two, for all languages and repetitions
    flag,   ///< true or false for all of them
    shadow, ///< true, false or a colour for all of them
    plain,  ///< a number for all of them; this and what follows stand in some tables only
    styles, ///< names of styles
    look,   ///< a table of fields; false for none
};

struct Field {
    std::string_view name;
    FieldForm form = FieldForm::number;
    Meaning meaning = Meaning::number; ///< of a number

    std::int32_t Slot::*member = nullptr; ///< of a number in the record
    std::size_t offset = 0, size = 0;     ///< of a text in the record: bytes, with the terminating zero
    char letter = '\0';                   ///< of a flag: sets this letter of draw_flags
    std::size_t position = 0;             ///< of the letter

    std::string_view unit{};       ///< "pixels"; empty: none
    std::int64_t min = 0, max = 0; ///< of a number; both 0: any of 32 bits
    std::string_view help{};
};

/// The fields of a record, numbers first, in its order; then what only sources have.
std::span<const Field> all_fields();
std::span<const Field> record_fields();
std::span<const Field> number_fields();
std::span<const Field> text_fields();
std::span<const Field> source_fields();

/// Null if there is no such field.
const Field* find_field(std::string_view name);
const Field* find_number_field(std::string_view name);

inline constexpr std::size_t field_count = 30; ///< of a record

/// The number of a record's field, number fields first; nothing if there is no such field.
std::optional<std::size_t> field_number(std::string_view name);

/// "0 to 100 tenths of a second", "at most 90 characters"; empty for a number of any size.
std::string range_of(const Field& field);

/// The table of a record's fields as docs/formats.md has it.
std::string field_table();

/// The bytes of a text field in a record.
std::span<char> bytes_of(Slot& slot, const Field& field);
std::string_view bytes_of(const Slot& slot, const Field& field);

/// A record before its source sets anything: empty and inert.
Slot empty_slot();

/// A record in a gap between those of a source: empty, inert and hidden.
Slot gap_slot();

} // namespace vcc::kit
