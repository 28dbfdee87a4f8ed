// Toggle files, with the slot file that they belong to.
#include "world.h"

#include "screen/draw_slot.h"
#include "screen/slot_file.h"

using namespace vcc;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::World& world = fuzz::World::start();
    world.use_fonts();
    static const BitmapPtr target(create_bitmap(800, 600));
    world.write("a.slt", std::string_view("\x02\0\0\0", 4).substr(0, 4));
    world.write("a.tgl", fuzz::as_text(data, size));
    SlotSet set;
    load_slot_set("a.slt", set);
    load_toggles("a.slt", set);
    draw_slots(target.get(), set.toggles);
    return 0;
}
