#include "interaction/focus.h"

#include "core/geometry.h"
#include "core/installation.h"
#include "core/text.h"
#include "screen/draw.h"
#include "text/fonts.h"

#include <allegro.h>

#include <algorithm>
#include <cstdint>

namespace vcc {

Rect slot_rect(const Slot& slot) {
    if (slot.graphic != 0) {
        const std::int64_t width = std::int64_t{slot.box_width} - slot.src_x;
        const std::int64_t height = std::int64_t{slot.box_height} - slot.src_y;
        return {as_coordinate(slot.dest_x), as_coordinate(slot.dest_y), as_coordinate(slot.dest_x + width),
                as_coordinate(slot.dest_y + height)};
    }
    const auto [x, y] = slot_position(slot);
    const int length = static_cast<int>(text_of(slot.text).size());
    const int characters = slot.input_mode != 0 ? std::max(length, slot.size) : length;
    return {x, y, x + column_x(slot.font, characters), y + cell_height(slot.font)};
}

bool is_selectable(const Slot& slot) {
    return slot.toggle != -1 && !skipped_by_focus(slot);
}

int slot_under_pointer(int start, std::span<const Slot> slots, bool single) {
    const int count = static_cast<int>(slots.size());
    if (count == 0 && !single)
        return start;
    const int x = mouse_x, y = mouse_y;
    const auto hit = [&](int index) {
        const Slot& slot = slots[static_cast<std::size_t>(index)];
        return slot.toggle != -1 && slot_rect(slot).contains(x, y);
    };
    if (single)
        return start >= 0 && start < count && hit(start) ? start : -1;
    for (int index = 0; index < count; ++index)
        if (hit(index))
            return index;
    return -1;
}

int pick_focus(SlotSet& set, int index, int direction, bool single) {
    if (const int pointed = slot_under_pointer(index, set.slots, single); pointed >= 0)
        index = pointed;
    for (int tries = set.slot_count(); tries > 0 && set.has_slot(index); --tries) {
        const Slot& slot = set.slots[static_cast<std::size_t>(index)];
        if (is_selectable(slot)) {
            if (Slot* const look = set.toggle(index); look && slot.input_mode != 0)
                store_text(look->text, text_of(slot.text));
            select_font(slot.font);
            return index;
        }
        index = (index + (direction < 0 ? set.slot_count() - 1 : 1)) % set.slot_count();
    }
    return -1;
}

Point pointer_place(const Slot& slot, int focus_x, int focus_y) {
    std::int64_t x = 0, y = 0;
    if (placed_in_pixels(slot)) {
        x = slot.dest_x + (std::int64_t{slot.box_width} - slot.src_x) / 2;
        y = slot.dest_y + (std::int64_t{slot.box_height} - slot.src_y) / 2;
    } else if (is_boxed(slot)) {
        x = column_x(drawing.current_font, slot.column) + slot.box_width / 2;
        y = row_y(drawing.current_font, slot.row) + slot.box_height / 2;
    } else {
        const int half_length = static_cast<int>(text_of(slot.text).size()) / 2;
        x = column_x(drawing.current_font, std::clamp(slot.column, 0, grid_column_limit) + half_length);
        y = row_y(drawing.current_font, slot.row) + cell_height(drawing.current_font) / 2;
    }
    // Keeps the pointer's picture, which lies right of and below its hot spot, on the screen.
    constexpr int picture = 20;
    return {as_coordinate(std::min<std::int64_t>(x, layout_width - focus_x - picture)),
            as_coordinate(std::min<std::int64_t>(y, layout_height - focus_y - picture))};
}

void place_pointer(const Slot& slot) {
    const Point place = pointer_place(slot, mouse_x_focus, mouse_y_focus);
    put_pointer(place.x, place.y);
}

} // namespace vcc
