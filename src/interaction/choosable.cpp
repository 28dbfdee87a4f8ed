#include "interaction/choosable.h"

#include "core/installation.h"
#include "core/log.h"
#include "display/buffers.h"
#include "interaction/focus.h"

namespace vcc {

namespace {

bool reaches_the_picture(const Slot& slot) {
    const auto [x1, y1, x2, y2] = slot_rect(slot);
    return x1 < layout_width && y1 < layout_height && x2 >= 0 && y2 >= 0;
}

bool has_a_picture(const Slot& slot) {
    return slot.graphic == 0 || is_text_window(slot) || graphic_buffer(slot.buffer);
}

} // namespace

std::string why_nothing_can_be_chosen(const SlotSet& set) {
    int inert = 0, hidden = 0, outside = 0, empty = 0;
    for (const Slot& slot : set.slots) {
        if (!is_selectable(slot))
            ++inert;
        else if (is_hidden(slot))
            ++hidden;
        else if (!reaches_the_picture(slot))
            ++outside;
        else if (!has_a_picture(slot))
            ++empty;
        else
            return {};
    }
    return format_text(
        "%s: nothing on it can be chosen: of its %d slots %d take no focus, %d are hidden, %d lie outside "
        "the picture, %d name a buffer without a picture",
        set.file.c_str(), set.slot_count(), inert, hidden, outside, empty);
}

} // namespace vcc
