#include "interaction/text_edit.h"

#include "core/text.h"

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

} // namespace vcc
