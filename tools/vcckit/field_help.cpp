#include "field_help.h"

#include "fields.h"

#include <iterator>

namespace vcc::kit {

namespace {

using enum FieldKind;

constexpr FieldHelp record_fields[] = {
    {"reserved", number, "", 0, 0, "nothing"},
    {"font", number, "", 0, 10, "of the text"},
    {"size", number, "characters", 0, 90, "entry field: how many fit in it"},
    {"box_width", number, "pixels", 0, 32767,
     "text: width of the filled box behind it, 0 for none; picture: right edge of the piece that is shown (exclusive)"},
    {"box_height", number, "pixels", 0, 32767,
     "text: height of that box; picture: bottom edge of the piece (exclusive)"},
    {"fore_colour", number, "", 0, 255, "colour of the text"},
    {"back_colour", number, "", 0, 255, "colour of the box"},
    {"column", number, "cells", 0, 265,
     "place of the text in the cells of its font, unless both `dest_x` and `dest_y` "
     "are set"},
    {"row", number, "cells", 0, 199, "its row in those cells"},
    {"input_mode", number, "", 0, 2,
     "0 button or label, 1 entry field for digits, blank and \"-\", other numbers: entry field for any text"},
    {"toggle", number, "", -1, 199,
     "-1 inert, 0 can be selected, above 0 can be selected and is highlighted by the toggle record of the slot's own "
     "number (entry field: the number of the record with its looks while it is edited)"},
    {"activated", number, "", 0, 199, "number of the toggle record that is shown when the slot is pressed, 0 for none"},
    {"buffer", number, "", 0, 24,
     "picture: number of the graphic buffer it is cut from; slot 0: the buffer with the screen's background"},
    {"graphic", number, "", 0, 0,
     "0 text, other numbers: picture, or, when `text` begins with \"TEXT-WIN\", the number of a text window"},
    {"src_x", number, "pixels", 0, 32767, "left edge of the piece of picture"},
    {"src_y", number, "pixels", 0, 32767, "top edge"},
    {"dest_x", number, "pixels", 0, 799, "place on the screen, from its left edge"},
    {"dest_y", number, "pixels", 0, 599, "from its top edge"},
    {"action", number, "", 0, 0, "what the slot does; the names below"},
    {"sound", number, "", 0, 189, "effect played when the record is drawn; in a toggle record: when the pointer comes"},
    {"sound_act", number, "", 0, 189, "effect played when the slot is pressed"},
    {"display_time", number, "tenths of a second", 0, 100, "how long the pressed look stays"},
    {"min_value", number, "", 0, 0, "nothing"},
    {"max_value", number, "", 0, 0, "nothing"},
    {"help_number", number, "", 0, 32767, "entry in the help file, 0 for none"},
    {"help_file", text, "characters", 0, 90, "path of the help file"},
    {"draw_flags", text, "characters", 0, 30,
     "the first \"n\": hidden; the second \"s\": shadow; the third \"x\": the keyboard passes over it"},
    {"sound_flags", text, "characters", 0, 30,
     "begins with \"n\": `sound` is not played; begins with a number: colour of the shadow"},
    {"text", text, "characters", 0, 90, "what is written"},
    {"name", text, "characters", 0, 31, "nothing"},
};
static_assert(std::size(record_fields) == field_count);

constexpr FieldHelp source_fields[] = {
    {"index", number, "", 0, 199, "number of the record"},
    {"style", text, "", 0, 0, "a style, or several, applied in order before the record itself"},
    {"hidden", flag, "", 0, 0, "not drawn, and not to be selected"},
    {"shadow", flag, "", 0, 0, "the text has a shadow: true, or its colour"},
    {"focus_skip", flag, "", 0, 0, "the keyboard passes over it"},
    {"align", choice, "", 0, 0, "left, centre or right between the edges that `box_width` gives"},
    {"padding", number, "pixels", 0, 800, "keeps an aligned text away from the edges"},
    {"highlight", flag, "", 0, 0, "the look while the pointer is on the slot"},
    {"pressed", flag, "", 0, 0, "the look when the slot is pressed"},
    {"copy", number, "", 0, 199, "toggle record: the slot that it begins as"},
};

constexpr WindowFieldHelp window_fields[] = {
    {"xo", {"left", number, "pixels or cells", -32768, 32767, "left edge: cells of the window's font, or pixels"}},
    {"yo", {"top", number, "pixels or cells", -32768, 32767, "top edge"}},
    {"xu", {"right", number, "pixels or cells", -32768, 32767, "right edge"}},
    {"yu", {"bottom", number, "pixels or cells", -32768, 32767, "bottom edge"}},
    {"w", {"pixels", number, "", 0, 1, "1: edges are pixels"}},
    {"t", {"font", number, "", 0, 10, "of cells and title"}},
    {"-", {"style", number, "", -1, 1, "0 solid, below 0 dotted, above 0 translucent"}},
    {"c", {"colour", number, "", -1, 255, "of fill, dots, grid and frame; below 0 no fill"}},
    {"r", {"red", number, "", 0, 255, "of a translucent fill"}},
    {"g", {"green", number, "", 0, 255, "of a translucent fill"}},
    {"b", {"blue", number, "", 0, 255, "of a translucent fill"}},
    {"h", {"alpha", number, "", 0, 255, "of a translucent fill"}},
    {"f", {"title_colour", number, "", 0, 255, "of the title"}},
    {"s", {"shadow", number, "pixels", 0, 100, "width of a translucent window's shadow"}},
    {"l", {"grid", number, "pixels", 0, 800, "distance of grid lines, 0 for none"}},
    {"o", {"open_sound", number, "", 0, 189, "effect when the window opens"}},
    {"e", {"close_sound", number, "", 0, 189, "stored only"}},
    {"m",
     {"pointer_offset", number, "pixels", 0, 800, "the pointer goes this far right of the left edge; 0: it stays"}},
    {"", {"title", text, "characters", 0, 243, "cannot begin with a letter of the other lines"}},
};

std::string range_of(const FieldHelp& field) {
    if (field.kind == text)
        return "at most " + std::to_string(field.max) + " " + std::string(field.unit);
    std::string range = field.min == field.max ? "" : std::to_string(field.min) + " to " + std::to_string(field.max);
    if (!field.unit.empty())
        range += (range.empty() ? "" : " ") + std::string(field.unit);
    return range;
}

} // namespace

std::span<const FieldHelp> record_field_help() {
    return record_fields;
}

std::span<const FieldHelp> source_field_help() {
    return source_fields;
}

std::span<const WindowFieldHelp> window_field_help() {
    return window_fields;
}

std::string_view word_of(FieldKind kind) {
    constexpr std::string_view words[] = {"number", "text", "flag", "choice"};
    return words[static_cast<std::size_t>(kind)];
}

std::string field_table() {
    std::string table = "| Offset | Field | Range | Meaning |\n|---|---|---|---|\n";
    std::size_t offset = 0;
    for (const FieldHelp& field : record_fields) {
        const TextField* const known = find_text_field(field.name);
        table += "| " + std::to_string(known ? known->offset : offset) + " | `" + std::string(field.name) + "` | " +
                 range_of(field) + " | " + std::string(field.help) + " |\n";
        offset += sizeof(std::int32_t);
    }
    return table;
}

} // namespace vcc::kit
