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

std::size_t at(int position) {
    return static_cast<std::size_t>(position);
}

bool allowed_in_number(int character) {
    return character == ' ' || character == '-' || (character >= '0' && character <= '9');
}

void remove_at(FieldEdit& field, int position) {
    field.text.erase(at(position), 1);
    field.text.push_back(' ');
}

EditOutcome type_over(FieldEdit& field, char character, int length) {
    field.text[at(field.cursor)] = character;
    if (field.cursor + 1 > length - 1)
        return EditOutcome::full;
    ++field.cursor;
    return EditOutcome::changed;
}

/// The last position keeps its character; the one pushed onto it is lost.
EditOutcome type_in(FieldEdit& field, char character, int length) {
    const int p = field.cursor;
    if (p + 1 >= length) {
        field.text[at(p)] = character;
        return EditOutcome::changed;
    }
    field.text.insert(at(p), 1, character);
    field.text.erase(at(length - 1), 1);
    ++field.cursor;
    return EditOutcome::changed;
}

EditOutcome move_left(FieldEdit& field, bool far) {
    if (!far && field.cursor == 0)
        return EditOutcome::at_edge;
    field.cursor = far ? 0 : field.cursor - 1;
    return EditOutcome::changed;
}

EditOutcome move_right(FieldEdit& field, int length, bool far) {
    if (far) {
        std::string words = trim_left(field.text);
        field.cursor = std::clamp(trim_right(words) - 1, 0, length - 1);
        return EditOutcome::changed;
    }
    if (field.cursor + 1 >= length)
        return EditOutcome::at_edge;
    ++field.cursor;
    return EditOutcome::changed;
}

EditOutcome apply_editing_key(FieldEdit& field, const KeyEvent& key, int length, int& insert) {
    const bool far = key.modifier == key::modifier_ctrl;
    switch (key.code) {
    case key::insert:
        insert = 1 - insert;
        return EditOutcome::changed;
    case key::del:
        field.text.resize(at(length));
        remove_at(field, field.cursor);
        return EditOutcome::changed;
    case key::clear_field:
        field = {std::string(at(length), ' '), 0};
        return EditOutcome::changed;
    case key::left:
    case key::ctrl_left:
        return move_left(field, far);
    case key::right:
    case key::ctrl_right:
        return move_right(field, length, far);
    case key::backspace:
        if (field.cursor == 0)
            return EditOutcome::ignored;
        field.text.resize(at(length));
        remove_at(field, --field.cursor);
        return EditOutcome::changed;
    default:
        return EditOutcome::ignored;
    }
}

constexpr int numeric_field = 1;
constexpr int insert_colour_step = 16;

/// `look`, the slot or its toggle record, gives font, box and colours.
FieldLook field_look(const Slot& slot, const Slot& look) {
    return {look.fore_colour, look.back_colour, look.box_width != 0,
            has_shadow(slot) ? static_cast<unsigned char>(slot.sound_flags[1]) : -1};
}

} // namespace

EditOutcome edit_field(FieldEdit& field, const KeyEvent& key, int length, bool numeric, bool editable, int& insert) {
    field.text.resize(std::max(field.text.size(), at(length)), ' ');
    field.cursor = std::clamp(field.cursor, 0, length - 1);
    if (!editable || key.code == 0 || key.kind == KeyKind::ending)
        return EditOutcome::ignored;
    if (key.kind == KeyKind::editing)
        return apply_editing_key(field, key, length, insert);
    if (numeric && !allowed_in_number(key.code))
        return EditOutcome::forbidden;
    field.text.resize(at(length));
    const char character = static_cast<char>(key.code);
    return insert == 0 ? type_over(field, character, length) : type_in(field, character, length);
}

void draw_cursor(BITMAP* target, const FieldPlace& field, const FieldLook& look, std::string_view text, int cursor,
                 int mode) {
    if (!look.editable)
        return;
    const std::size_t before = std::min(static_cast<std::size_t>(cursor), text.size());
    const std::string_view character = before < text.size() ? text.substr(before, 1) : std::string_view(" ");
    const int x = field.x + text_width(drawing.current_font, text.substr(0, before));
    fill_text_box(target, x, field.y, text_width(drawing.current_font, character),
                  look.text_colour + insert_colour_step * mode);
    draw_text(target, x, field.y, character, look.box_colour, false); // no shadow: it would touch the next character
}

FieldEntry::FieldEntry(ScreenRun& run, const Slot& look, bool clear_keyboard)
    : hard_edges_(anti_aliased_text, 0), run_(run), slot_(run.slot()), place_(run.fields[run.index()]),
      look_(field_look(slot_, look)), edit_{run.edit_texts[run.index()], 0}, clear_keyboard_(clear_keyboard) {
    look_.editable = look_.editable && place_.size > 0;
    place_.size = std::clamp(place_.size, 1, field_limit);
    draw_cursor(run_.target, place_, look_, edit_.text, edit_.cursor, player_input.insert_mode);
    update_screen(run_.target);
}

KeyEvent FieldEntry::apply(const KeyEvent& key) {
    const std::string before = edit_.text;
    const EditOutcome outcome = edit_field(edit_, key, place_.size, place_.input_mode == numeric_field, look_.editable,
                                           player_input.insert_mode);
    run_.edit_texts[run_.index()] = edit_.text;
    if (outcome == EditOutcome::at_edge) {
        if (clear_keyboard_)
            clear_keybuf();
        return key;
    }
    if (outcome == EditOutcome::forbidden)
        show_status("Nur ", "numerische Zeichen zugelassen!");
    if (edit_.text.size() < before.size())
        restore_background(before);
    draw();
    if (outcome != EditOutcome::ignored)
        update_screen(run_.target);
    return outcome == EditOutcome::full ? KeyEvent{key::enter, 0, KeyKind::ending} : key;
}

/// A text longer than its field has covered some of the background, too.
void FieldEntry::restore_background(const std::string& text) {
    if (BITMAP* const clean = graphic_buffer(run_.set->slots.front().buffer))
        blit(clean, run_.target, place_.x, place_.y, place_.x, place_.y, text_width(slot_.font, text),
             cell_height(slot_.font) + 1);
}

void FieldEntry::draw() {
    select_font(slot_.font);
    if (look_.editable)
        fill_text_box(run_.target, place_.x, place_.y, column_x(drawing.current_font, place_.size), look_.box_colour);
    if (look_.shadow_colour >= 0)
        draw_text(run_.target, place_.x + 1, place_.y + 1, edit_.text, look_.shadow_colour, false);
    draw_text(run_.target, place_.x, place_.y, edit_.text, look_.text_colour, false);
    draw_cursor(run_.target, place_, look_, edit_.text, edit_.cursor, player_input.insert_mode);
}

} // namespace vcc
