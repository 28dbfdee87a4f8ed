// What goes on while the program waits for the player.
#include "cc/screens.h"
#include "cc/sets.h"
#include "core/window_state.h"
#include "figure.h"
#include "interaction/focus.h"
#include "interaction/screen_run.h"
#include "screen/draw_slot.h"
#include "settings/settings.h"
#include "sound/music.h"
#include "sound/sound.h"
#include "still_sound.h"
#include "world.h"

namespace vcc::bench {

int frames_left = 0; ///< of the waiting that is measured

namespace {

/// As many buttons and labels as a set can hold, none of them under the pointer.
std::vector<Slot> full_set() {
    std::vector<Slot> slots(slot_limit);
    for (std::size_t i = 0; i < slots.size(); ++i) {
        Slot& slot = slots[i];
        slot.font = static_cast<int>(i % 11);
        slot.graphic = i % 2 ? 1 : 0;
        slot.dest_x = 20 + static_cast<int>(i % 20) * 38;
        slot.dest_y = 20 + static_cast<int>(i / 20) * 55;
        slot.box_width = 30;
        slot.box_height = 40;
        slot.text[0] = 'B';
    }
    return slots;
}

void hit_test_200_slots(benchmark::State& state) {
    const std::vector<Slot> slots = full_set();
    mouse_x = 799;
    mouse_y = 599;
    measure(state, 5, 1000, [&] {
        if (slot_under_pointer(0, slots, false) != -1)
            std::abort();
    });
}
VELDOR_FIGURE(hit_test_200_slots);

/// A frame of the menu's loop with the pointer off every button and the music playing; nothing is due.
void idle_frame(benchmark::State& state) {
    const StillSound sound;
    ScreenOwner owner;
    owner.every_frame = [] { follow_music(target()); };
    ScreenRun run;
    run.target = target();
    run.set = &menu_set;
    run.owner = &owner;
    run.fields = draw_slot_set(target(), menu_set);
    run.current = pick_focus(menu_set, 0, 1, false);
    if (run.current < 0) {
        state.SkipWithError("the menu has nothing to select");
        return;
    }
    mouse_x = 0;
    mouse_y = 0;
    const Slot& look = menu_set.slots[static_cast<std::size_t>(run.current)];
    constexpr int frames = 1000;
    measure_batch(state, 10, frames, [&] {
        frames_left = frames;
        close_requested = 0;
        await_input(run, look, false, false);
    });
    close_requested = 0;
}
VELDOR_FIGURE(idle_frame);

} // namespace

} // namespace vcc::bench

// The yield that ends every frame is not the program's work. The window is closed after the last one.
extern "C" void rest(unsigned int) {
    if (--vcc::bench::frames_left == 0)
        vcc::close_requested = 1;
}
