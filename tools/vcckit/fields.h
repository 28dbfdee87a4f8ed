// The fields of a slot record by name.
#pragma once

#include "names.h"
#include "screen/slot.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace vcc::kit {

struct NumberField {
    std::string_view name;
    std::int32_t Slot::*member;
    Meaning meaning;
};

struct TextField {
    std::string_view name;
    std::size_t offset; ///< bytes from the start of the record
    std::size_t size;   ///< bytes, with the terminating zero
};

std::span<const NumberField> number_fields();
std::span<const TextField> text_fields();

const NumberField* find_number_field(std::string_view name);
const TextField* find_text_field(std::string_view name);

inline constexpr std::size_t field_count = 30;

/// The number of a field, number fields first; nothing if there is no such field.
std::optional<std::size_t> field_number(std::string_view name);

/// The bytes of a text field in a record.
std::span<char> bytes_of(Slot& slot, const TextField& field);
std::string_view bytes_of(const Slot& slot, const TextField& field);

/// A record before its source sets anything: empty and inert.
Slot empty_slot();

/// A record in a gap between those of a source: empty, inert and hidden.
Slot gap_slot();

} // namespace vcc::kit
