#include "cc/hints.h"

#include "core/scope.h"
#include "core/text.h"
#include "screen/draw.h"
#include "screen/draw_slot.h"
#include "sound/sound.h"
#include "text/fonts.h"
#include "text/screen_texts.h"

#include <algorithm>

namespace vcc {

namespace {

/// Draws the part of the set's picture in which a text of a slot stands.
void draw_around(BITMAP* target, const SlotSet& set, const Slot& slot, int width) {
    const EffectsHeld quiet;
    const SwitchSet whole(drawing.full_redraw, 1);
    const auto [x, y] = slot_position(slot);
    set_clip_rect(target, x, y, x + width, y + cell_height(slot.font) + 1);
    draw_slots(target, set.slots);
    set_clip_rect(target, 0, 0, target->w - 1, target->h - 1);
    update_screen(target);
}

} // namespace

void name_hints(BITMAP* shown, SlotSet& set, bool for_gamepad) {
    for (int pair = 0; pair < hint_pairs; ++pair) {
        const int number = screen_text_number::hints + 2 * pair;
        const std::string_view old_text = screen_text(for_gamepad ? number : number + 1),
                               new_text = screen_text(for_gamepad ? number + 1 : number);
        if (old_text.empty() || new_text.empty())
            continue;
        for (Slot& slot : set.slots) {
            if (text_of(slot.text) != old_text)
                continue;
            store_text(slot.text, new_text);
            if (shown)
                draw_around(shown, set, slot,
                            std::max(text_width(slot.font, old_text), text_width(slot.font, new_text)));
        }
    }
}

} // namespace vcc
