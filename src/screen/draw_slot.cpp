#include "screen/draw_slot.h"

#include "core/geometry.h"
#include "core/scope.h"
#include "core/text.h"
#include "display/buffers.h"
#include "screen/draw.h"
#include "screen/draw_text.h"
#include "screen/text_window.h"
#include "settings/settings.h"
#include "sound/sound.h"
#include "text/fonts.h"

#include <algorithm>
#include <optional>

namespace vcc {

namespace {

void play_draw_sound(const Slot& slot) {
    if (sfx_allowed() && slot.sound_flags[0] != 'n')
        play_effect(slot.sound);
}

void draw_picture(BITMAP* target, const Slot& slot) {
    if (is_text_window(slot)) {
        draw_text_window(target, slot.graphic);
        return;
    }
    play_draw_sound(slot);
    const int src_x = as_coordinate(slot.src_x), src_y = as_coordinate(slot.src_y);
    if (BITMAP* const source = graphic_buffer(slot.buffer))
        masked_blit(source, target, src_x, src_y, as_coordinate(slot.dest_x), as_coordinate(slot.dest_y),
                    as_coordinate(slot.box_width) - src_x, as_coordinate(slot.box_height) - src_y);
}

/// On a box, in a field or over a picture there is no clean background to blend into.
bool wants_hard_edges(const Slot& slot) {
    return slot.input_mode != 0 || is_boxed(slot) || skipped_by_focus(slot);
}

void draw_slot_text(BITMAP* target, const Slot& slot) {
    const SwitchSet on_box(drawing.text_on_box, anti_aliased_text && wants_hard_edges(slot) ? 1 : drawing.text_on_box);
    const FontSelection selection(slot.font);
    const auto [x, y] = slot_position(slot);
    const std::string_view text = text_of(slot.text);
    draw_slot_box_at(target, x, y, &slot, 0);
    const int shadow = to_number(text_of(slot.sound_flags));
    if (has_shadow(slot) && anti_aliased_text) { // a pixel value here, an index below: odd on purpose
        draw_shadow_text(target, x, y, text, slot.fore_colour, shadow, false);
    } else {
        if (has_shadow(slot))
            draw_text(target, x + 1, y + 1, text, shadow, false);
        draw_text(target, x, y, text, slot.fore_colour, false);
    }
    play_draw_sound(slot);
}

} // namespace

Point slot_position(const Slot& slot) {
    if (placed_in_pixels(slot))
        return {as_coordinate(slot.dest_x), as_coordinate(slot.dest_y)};
    return {column_x(slot.font, slot.column), row_y(slot.font, slot.row)};
}

void draw_slot(BITMAP* target, std::span<const Slot> records, int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= records.size())
        return;
    const Slot& slot = records[static_cast<std::size_t>(index)];
    if (is_hidden(slot))
        return;
    if (slot.graphic == 0)
        draw_slot_text(target, slot);
    else if (show_slot_pictures)
        draw_picture(target, slot);
}

void draw_slots(BITMAP* target, std::span<const Slot> records) {
    for (int index = 0; index < static_cast<int>(records.size()); ++index)
        draw_slot(target, records, index);
}

std::vector<FieldPlace> build_entry_table(BITMAP* target, std::span<const Slot> slots) {
    std::vector<FieldPlace> places;
    places.reserve(slots.size());
    std::optional<EffectsHeld> rest_held;
    for (const Slot& slot : slots) {
        select_font(slot.font);
        const auto [x, y] = slot_position(slot);
        places.push_back({x, y, std::clamp(slot.size, 0, field_limit), slot.input_mode, slot.back_colour});
        draw_slot(target, std::span(&slot, 1), 0);
        if (slot.sound != 0 && !rest_held)
            rest_held.emplace(); // only the first slot with a sound is heard
    }
    return places;
}

std::vector<FieldPlace> draw_slot_set(BITMAP* target, const SlotSet& set) {
    const SwitchSet whole(drawing.full_redraw, anti_aliased_text ? 1 : drawing.full_redraw);
    return build_entry_table(target, set.slots);
}

} // namespace vcc
