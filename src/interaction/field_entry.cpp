#include "interaction/field_entry.h"

#include "core/text.h"
#include "display/buffers.h"
#include "interaction/player_input.h"
#include "screen/draw.h"
#include "screen/draw_text.h"
#include "screen/status_line.h"
#include "settings/settings.h"
#include "text/fonts.h"

#include <allegro.h>

#include <algorithm>
#include <cstddef>

namespace vcc {

namespace {

constexpr int numeric_field = 1;
constexpr int insert_colour_step = 16;

bool allowed_in_number(int character) {
    return character == ' ' || character == '-' || (character >= '0' && character <= '9');
}

EditOutcome apply_editing_key(FieldEdit& field, int code, std::size_t length, int& insert) {
    switch (code) {
    case key::insert:
        insert = 1 - insert;
        break;
    case key::backspace:
        if (field.cursor == 0)
            return EditOutcome::ignored;
        --field.cursor;
        [[fallthrough]];
    case key::del:
        field.text.resize(length);
        field.text.erase(field.cursor, 1).push_back(' ');
        break;
    case key::clear_field:
        field = {std::string(length, ' '), 0};
        break;
    case key::left:
        if (field.cursor == 0)
            return EditOutcome::at_edge;
        --field.cursor;
        break;
    case key::right:
        if (field.cursor + 1 >= length)
            return EditOutcome::at_edge;
        ++field.cursor;
        break;
    case key::ctrl_left:
        field.cursor = 0;
        break;
    case key::ctrl_right: {
        std::string words = trim_left(field.text);
        field.cursor = std::min(static_cast<std::size_t>(std::max(trim_right(words), 1)), length) - 1;
        break;
    }
    default:
        return EditOutcome::ignored;
    }
    return EditOutcome::changed;
}

} // namespace

EditOutcome edit_field(FieldEdit& field, const KeyEvent& key, std::size_t length, bool numeric, bool editable,
                       int& insert) {
    field.text.resize(std::max(field.text.size(), length), ' ');
    if (!editable || key.kind == KeyKind::ending)
        return EditOutcome::ignored;
    if (key.kind == KeyKind::editing)
        return apply_editing_key(field, key.code, length, insert);
    if (numeric && !allowed_in_number(key.code))
        return EditOutcome::forbidden;
    field.text.resize(length);
    const auto character = static_cast<char>(key.code);
    const bool last = field.cursor + 1 == length;
    if (insert != 0 && !last) {
        field.text.insert(field.cursor, 1, character);
        field.text.erase(length - 1, 1); // the last position keeps its character; the one pushed onto it is lost
    } else {
        field.text[field.cursor] = character;
    }
    if (last)
        return insert != 0 ? EditOutcome::changed : EditOutcome::full;
    ++field.cursor;
    return EditOutcome::changed;
}

FieldEntry::FieldEntry(ScreenRun& run, const Slot& look, bool clear_keyboard)
    : hard_edges_(anti_aliased_text, 0), run_(run), slot_(run.slot()), look_(look),
      place_(run.fields[run.index()]), edit_{std::string(text_of(slot_.text)), 0}, clear_keyboard_(clear_keyboard) {
    draw_cursor();
    update_screen(run_.target);
}

KeyEvent FieldEntry::apply(const KeyEvent& key) {
    const std::string before = edit_.text;
    const auto length = static_cast<std::size_t>(std::max(place_.size, 1));
    const EditOutcome outcome =
        edit_field(edit_, key, length, place_.input_mode == numeric_field, editable(), player_input.insert_mode);
    if (outcome == EditOutcome::at_edge) {
        if (clear_keyboard_)
            forget_keys();
        return key;
    }
    if (outcome == EditOutcome::forbidden)
        show_status("Nur ", "numerische Zeichen zugelassen!");
    draw(edit_.text.size() < before.size() ? before : ""); // a text longer than its field covered more
    if (outcome != EditOutcome::ignored)
        update_screen(run_.target);
    return outcome == EditOutcome::full ? KeyEvent{key::enter, 0, KeyKind::ending} : key;
}

void FieldEntry::draw(std::string_view covering) {
    select_font(slot_.font);
    restore_behind_text(graphic_buffer(run_.set->slots.front().buffer), run_.target, place_.x, place_.y, covering);
    if (editable())
        fill_text_box(run_.target, place_.x, place_.y, column_x(drawing.current_font, place_.size), look_.back_colour);
    if (has_shadow(slot_))
        draw_text(run_.target, place_.x + 1, place_.y + 1, edit_.text, static_cast<unsigned char>(slot_.sound_flags[1]),
                  false);
    draw_text(run_.target, place_.x, place_.y, edit_.text, look_.fore_colour, false);
    draw_cursor();
}

/// Draws the cursor over the field; its box shows the mode.
void FieldEntry::draw_cursor() {
    if (!editable())
        return;
    const std::string_view text = edit_.text;
    const std::size_t cursor = std::min(edit_.cursor, text.size());
    const std::string_view character = cursor < text.size() ? text.substr(cursor, 1) : " ";
    const int x = place_.x + text_width(drawing.current_font, text.substr(0, cursor));
    fill_text_box(run_.target, x, place_.y, text_width(drawing.current_font, character),
                  look_.fore_colour + insert_colour_step * player_input.insert_mode);
    draw_text(run_.target, x, place_.y, character, look_.back_colour, false); // no shadow: it would touch the next one
}

} // namespace vcc
