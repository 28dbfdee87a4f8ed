// Slot files: read, drawn, searched for the focus.
#include "world.h"

#include "display/buffers.h"
#include "interaction/focus.h"
#include "screen/draw_slot.h"
#include "screen/slot_file.h"

using namespace vcc;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::World::start().use_fonts();
    static const BitmapPtr target(create_bitmap(800, 600));
    for (const int number : {3, 5})
        if (!graphic_buffers[static_cast<std::size_t>(number)])
            graphic_buffers[static_cast<std::size_t>(number)].reset(create_bitmap(400, 300));
    show_slot_pictures = 1;
    SlotSet set;
    set.slots = read_slot_file(fuzz::as_text(data, size)).records;
    set.toggles = set.slots;
    std::vector<std::string> edit_texts;
    draw_slot_set(target.get(), set, edit_texts);
    if (set.slots.empty())
        return 0;
    for (const int direction : {1, -1})
        pick_focus(set, 0, direction, false);
    for (const Slot& slot : set.slots)
        place_pointer(slot);
    return 0;
}
