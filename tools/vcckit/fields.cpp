#include "fields.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace vcc::kit {

namespace {

using enum Meaning;

constexpr NumberField numbers[] = {
    {"reserved", &Slot::reserved, number},
    {"font", &Slot::font, font},
    {"size", &Slot::size, number},
    {"box_width", &Slot::box_width, number},
    {"box_height", &Slot::box_height, number},
    {"fore_colour", &Slot::fore_colour, colour},
    {"back_colour", &Slot::back_colour, colour},
    {"column", &Slot::column, number},
    {"row", &Slot::row, number},
    {"input_mode", &Slot::input_mode, input},
    {"toggle", &Slot::toggle, focus},
    {"activated", &Slot::activated, number},
    {"buffer", &Slot::buffer, buffer},
    {"graphic", &Slot::graphic, number},
    {"src_x", &Slot::src_x, number},
    {"src_y", &Slot::src_y, number},
    {"dest_x", &Slot::dest_x, number},
    {"dest_y", &Slot::dest_y, number},
    {"action", &Slot::action, action},
    {"sound", &Slot::sound, sound},
    {"sound_act", &Slot::sound_act, sound},
    {"display_time", &Slot::display_time, number},
    {"min_value", &Slot::min_value, number},
    {"max_value", &Slot::max_value, number},
    {"help_number", &Slot::help_number, number},
};

constexpr TextField texts[] = {
    {"help_file", offsetof(Slot, help_file), sizeof(Slot::help_file)},
    {"draw_flags", offsetof(Slot, draw_flags), sizeof(Slot::draw_flags)},
    {"sound_flags", offsetof(Slot, sound_flags), sizeof(Slot::sound_flags)},
    {"text", offsetof(Slot, text), sizeof(Slot::text)},
    {"name", offsetof(Slot, name), sizeof(Slot::name)},
};

static_assert(std::size(numbers) + std::size(texts) == field_count);

template <class Field>
const Field* find_in(std::span<const Field> fields, std::string_view name) {
    const auto found = std::find_if(fields.begin(), fields.end(), [name](const Field& f) { return f.name == name; });
    return found == fields.end() ? nullptr : &*found;
}

} // namespace

std::span<const NumberField> number_fields() {
    return numbers;
}
std::span<const TextField> text_fields() {
    return texts;
}
const NumberField* find_number_field(std::string_view name) {
    return find_in(number_fields(), name);
}
const TextField* find_text_field(std::string_view name) {
    return find_in(text_fields(), name);
}

std::optional<std::size_t> field_number(std::string_view name) {
    if (const NumberField* const number = find_number_field(name))
        return static_cast<std::size_t>(number - numbers);
    if (const TextField* const text = find_text_field(name))
        return std::size(numbers) + static_cast<std::size_t>(text - texts);
    return std::nullopt;
}

std::span<char> bytes_of(Slot& slot, const TextField& field) {
    return {reinterpret_cast<char*>(&slot) + field.offset, field.size};
}
std::string_view bytes_of(const Slot& slot, const TextField& field) {
    return {reinterpret_cast<const char*>(&slot) + field.offset, field.size};
}

Slot empty_slot() {
    Slot slot{};
    slot.toggle = -1;
    return slot;
}

Slot gap_slot() {
    Slot slot = empty_slot();
    hide(slot);
    return slot;
}

} // namespace vcc::kit
