#include "interaction/field_entry.h"

#include "display/buffers.h"
#include "interaction/player_input.h"
#include "screen/draw.h"
#include "screen/status_line.h"
#include "settings/settings.h"
#include "text/fonts.h"

#include <allegro.h>

#include <algorithm>
#include <cstddef>

namespace vcc {

namespace {

constexpr int numeric_field = 1;
constexpr int status_font = 4;

std::size_t current_of(const ScreenRun& run) {
    return static_cast<std::size_t>(run.current);
}

} // namespace

FieldEntry::FieldEntry(ScreenRun& run, const Slot& look, bool clear_keyboard)
    : hard_edges_(anti_aliased_text, 0), run_(run), slot_(run.set->slots[current_of(run)]),
      place_(run.fields[current_of(run)]), look_(field_look(slot_, look)), edit_{run.edit_texts[current_of(run)], 0},
      clear_keyboard_(clear_keyboard) {
    look_.editable = look_.editable && place_.size > 0;
    place_.size = std::clamp(place_.size, 1, field_limit);
    draw_cursor(run_.target, place_, look_, edit_.text, edit_.cursor, player_input.insert_mode);
    update_screen(run_.target);
}

KeyEvent FieldEntry::apply(const KeyEvent& key) {
    const std::string before = edit_.text;
    const EditOutcome outcome = edit_field(edit_, key, place_.size, place_.input_mode == numeric_field, look_.editable,
                                           player_input.insert_mode);
    run_.edit_texts[current_of(run_)] = edit_.text;
    if (outcome == EditOutcome::at_edge) {
        if (clear_keyboard_)
            clear_keybuf();
        return key;
    }
    if (outcome == EditOutcome::forbidden)
        show_status("Nur ", "numerische Zeichen zugelassen!", status_font);
    if (edit_.text.size() < before.size())
        restore_background(before);
    draw();
    if (outcome != EditOutcome::ignored)
        update_screen(run_.target);
    return outcome == EditOutcome::full ? KeyEvent{key::enter, 0, KeyKind::ending} : key;
}

/// A text longer than the field stood on the screen's background as well.
void FieldEntry::restore_background(const std::string& text) {
    if (BITMAP* const clean = graphic_buffer(run_.set->slots.front().buffer))
        blit(clean, run_.target, place_.x, place_.y, place_.x, place_.y, text_width(slot_.font, text),
             cell_height(slot_.font) + 1);
}

void FieldEntry::draw() {
    select_font(slot_.font);
    draw_field(run_.target, place_, look_, edit_.text);
    draw_cursor(run_.target, place_, look_, edit_.text, edit_.cursor, player_input.insert_mode);
}

} // namespace vcc
