// Toggle files, with the slot file that they belong to.
#include "screen/draw_slot.h"
#include "screen/slot.h"
#include "world.h"

void vcc::fuzz::one_input(std::string_view input) {
    World::write("a.slt", {"\x02\0\0\0", 4});
    World::write("a.tgl", input);
    SlotSet set;
    load_slot_set("a.slt", set);
    load_toggles("a.slt", set);
    draw_slots(page_with_fonts(), set.toggles);
}
