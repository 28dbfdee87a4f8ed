// Slot files, with themselves as toggle files: read, drawn, searched for the focus.
#include "display/buffers.h"
#include "interaction/focus.h"
#include "screen/draw_slot.h"
#include "screen/slot.h"
#include "world.h"

void vcc::fuzz::one_input(std::string_view input) {
    for (const std::size_t number : {3u, 5u})
        if (!graphic_buffers[number])
            graphic_buffers[number].reset(create_bitmap(400, 300));
    for (const char* name : {"a.slt", "a.tgl"})
        world().write(name, input);
    SlotSet set;
    load_slot_set("a.slt", set);
    draw_slot_set(page_with_fonts(), set);
    if (set.slots.empty())
        return;
    for (const int direction : {1, -1})
        pick_focus(set, 0, direction, false);
    for (const Slot& slot : set.slots)
        place_pointer(slot);
}
