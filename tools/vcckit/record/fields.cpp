#include "vcckit/record/fields.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace vcc::kit {

namespace {

using enum Meaning;

struct Range {
    std::int64_t min = 0, max = 0;
};

constexpr Field number_of(std::string_view name, std::int32_t Slot::*member, Meaning meaning, std::string_view unit,
                          Range range, std::string_view help) {
    return {.name = name,
            .meaning = meaning,
            .member = member,
            .unit = unit,
            .min = range.min,
            .max = range.max,
            .help = help};
}

constexpr Field text_of(std::string_view name, std::size_t offset, std::size_t size, std::string_view help) {
    return {.name = name,
            .form = FieldForm::text,
            .offset = offset,
            .size = size,
            .unit = "characters",
            .max = static_cast<std::int64_t>(size) - 1,
            .help = help};
}

constexpr Field letter_of(std::string_view name, FieldForm form, char letter, std::size_t position,
                          std::string_view help) {
    return {.name = name,
            .form = form,
            .meaning = form == FieldForm::shadow ? colour : number,
            .letter = letter,
            .position = position,
            .help = help};
}

constexpr Field fields[] = {
    number_of("reserved", &Slot::reserved, number, "", {}, "nothing"),
    number_of("font", &Slot::font, font, "", {0, 10}, "of the text"),
    number_of("size", &Slot::size, number, "characters", {0, 90}, "entry field: how many fit in it"),
    number_of("box_width", &Slot::box_width, number, "pixels", {0, 32767},
              "text: width of the filled box behind it, 0 for none; picture: right edge of the piece that is shown "
              "(exclusive)"),
    number_of("box_height", &Slot::box_height, number, "pixels", {0, 32767},
              "text: height of that box; picture: bottom edge of the piece (exclusive)"),
    number_of("fore_colour", &Slot::fore_colour, colour, "", {0, 255}, "colour of the text"),
    number_of("back_colour", &Slot::back_colour, colour, "", {0, 255}, "colour of the box"),
    number_of("column", &Slot::column, number, "cells", {0, 265},
              "place of the text in the cells of its font, unless both `dest_x` and `dest_y` are set"),
    number_of("row", &Slot::row, number, "cells", {0, 199}, "its row in those cells"),
    number_of("input_mode", &Slot::input_mode, input, "", {0, 2},
              "0 button or label, 1 entry field for digits, blank and \"-\", other numbers: entry field for any text"),
    number_of("toggle", &Slot::toggle, focus, "", {-1, 199},
              "-1 inert, 0 can be selected, above 0 also highlighted, by the toggle record of the slot's own number "
              "(entry field: the number of the record with its looks while it is edited)"),
    number_of("activated", &Slot::activated, number, "", {0, 199},
              "number of the toggle record that is shown when the slot is pressed, 0 for none"),
    number_of("buffer", &Slot::buffer, buffer, "", {0, 24},
              "picture: number of the graphic buffer it is cut from; slot 0: the buffer with the screen's background"),
    number_of("graphic", &Slot::graphic, number, "", {},
              "0 text, other numbers: picture, or, when `text` begins with \"TEXT-WIN\", the number of a text window"),
    number_of("src_x", &Slot::src_x, number, "pixels", {0, 32767}, "left edge of the piece of picture"),
    number_of("src_y", &Slot::src_y, number, "pixels", {0, 32767}, "top edge"),
    number_of("dest_x", &Slot::dest_x, number, "pixels", {0, 799}, "place on the screen, from its left edge"),
    number_of("dest_y", &Slot::dest_y, number, "pixels", {0, 599}, "from its top edge"),
    number_of("action", &Slot::action, action, "", {}, "what the slot does; the names below"),
    number_of("sound", &Slot::sound, sound, "", {0, 189},
              "effect played when the record is drawn; in a toggle record: when the pointer comes"),
    number_of("sound_act", &Slot::sound_act, sound, "", {0, 189}, "effect played when the slot is pressed"),
    number_of("display_time", &Slot::display_time, number, "tenths of a second", {0, 100},
              "how long the pressed look stays"),
    number_of("min_value", &Slot::min_value, number, "", {}, "nothing"),
    number_of("max_value", &Slot::max_value, number, "", {}, "nothing"),
    number_of("help_number", &Slot::help_number, number, "", {0, 32767}, "entry in the help file, 0 for none"),

    text_of("help_file", offsetof(Slot, help_file), sizeof(Slot::help_file), "path of the help file"),
    text_of("draw_flags", offsetof(Slot, draw_flags), sizeof(Slot::draw_flags),
            "the first \"n\": hidden; the second \"s\": shadow; the third \"x\": the keyboard passes over it"),
    text_of("sound_flags", offsetof(Slot, sound_flags), sizeof(Slot::sound_flags),
            "begins with \"n\": `sound` is not played; begins with a number: colour of the shadow"),
    text_of("text", offsetof(Slot, text), sizeof(Slot::text), "what is written"),
    text_of("name", offsetof(Slot, name), sizeof(Slot::name), "nothing"),

    {.name = "index", .form = FieldForm::plain, .max = 199, .help = "number of the record"},
    {.name = "style",
     .form = FieldForm::styles,
     .help = "a style, or several, applied in order before the record itself"},
    letter_of("hidden", FieldForm::flag, 'n', 0, "not drawn, and not to be selected"),
    letter_of("shadow", FieldForm::shadow, 's', 1, "the text has a shadow: true, or its colour"),
    letter_of("focus_skip", FieldForm::flag, 'x', 2, "the keyboard passes over it"),
    {.name = "align",
     .form = FieldForm::word,
     .help = "left, centre or right between the edges that `box_width` gives"},
    {.name = "padding",
     .form = FieldForm::pair,
     .unit = "pixels",
     .max = 800,
     .help = "keeps an aligned text away from the edges: one number, or across and down"},
    {.name = "highlight", .form = FieldForm::look, .help = "the look while the pointer is on the slot"},
    {.name = "pressed", .form = FieldForm::look, .help = "the look when the slot is pressed"},
    {.name = "copy", .form = FieldForm::plain, .max = 199, .help = "toggle record: the slot that it begins as"},
};

constexpr std::size_t number_count = 25;
static_assert(std::ranges::all_of(std::span(fields).first<number_count>(), [](const Field& f) { return f.member; }) &&
              std::ranges::all_of(std::span(fields).subspan<number_count, field_count - number_count>(),
                                  [](const Field& f) { return f.size > 0; }));

const Field* find_in(std::span<const Field> some, std::string_view name) {
    const auto found = std::ranges::find(some, name, &Field::name);
    return found == some.end() ? nullptr : &*found;
}

} // namespace

std::span<const Field> all_fields() {
    return fields;
}
std::span<const Field> record_fields() {
    return all_fields().first(field_count);
}
std::span<const Field> number_fields() {
    return all_fields().first(number_count);
}
std::span<const Field> text_fields() {
    return all_fields().subspan(number_count, field_count - number_count);
}
std::span<const Field> source_fields() {
    return all_fields().subspan(field_count);
}
const Field* find_field(std::string_view name) {
    return find_in(all_fields(), name);
}
const Field* find_number_field(std::string_view name) {
    return find_in(number_fields(), name);
}

std::optional<std::size_t> field_number(std::string_view name) {
    const Field* const field = find_in(record_fields(), name);
    return field ? std::optional(static_cast<std::size_t>(field - fields)) : std::nullopt;
}

std::string range_of(const Field& field) {
    if (field.form == FieldForm::text)
        return "at most " + std::to_string(field.max) + " " + std::string(field.unit);
    std::string range = field.min == field.max ? "" : std::to_string(field.min) + " to " + std::to_string(field.max);
    if (!field.unit.empty())
        range += (range.empty() ? "" : " ") + std::string(field.unit);
    return range;
}

std::string field_table() {
    std::string table = "| Offset | Field | Range | Meaning |\n|---|---|---|---|\n";
    for (const Field& field : record_fields()) {
        const std::size_t number = *field_number(field.name);
        table += "| " + std::to_string(field.size > 0 ? field.offset : number * sizeof(std::int32_t)) + " | `" +
                 std::string(field.name) + "` | " + range_of(field) + " | " + std::string(field.help) + " |\n";
    }
    return table;
}

std::span<char> bytes_of(Slot& slot, const Field& field) {
    return {reinterpret_cast<char*>(&slot) + field.offset, field.size};
}
std::string_view bytes_of(const Slot& slot, const Field& field) {
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
