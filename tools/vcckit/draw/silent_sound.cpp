#include "vcckit/draw/silent_sound.h"

#include <allegro.h>

namespace vcc::kit {

namespace {

DIGI_DRIVER driver() {
    DIGI_DRIVER card{};
    card.id = DIGI_NONE;
    card.name = card.desc = card.ascii_name = "silence";
    card.voices = card.max_voices = card.def_voices = 32;
    card.detect = card.set_mixer_volume = [](int) { return 0; };
    card.init = [](int, int) { return 0; };
    card.exit = card.release_voice = card.start_voice = card.stop_voice = [](int) {};
    card.stop_volume_ramp = card.stop_frequency_sweep = card.stop_pan_sweep = [](int) {};
    card.buffer_size = [] { return 4096; };
    card.init_voice = [](int, const SAMPLE*) {};
    card.loop_voice = card.set_position = card.set_volume = card.set_frequency = card.set_pan = [](int, int) {};
    card.ramp_volume = card.sweep_frequency = card.sweep_pan = [](int, int, int) {};
    card.get_position = [](int) { return 0; };
    card.get_volume = card.get_pan = [](int) { return 255; };
    card.get_frequency = [](int) { return 22050; };
    return card;
}

} // namespace

void install_silent_sound() {
    static DIGI_DRIVER card = driver();
    remove_sound();
    reserve_voices(-1, -1); // the silence has fewer voices than an earlier set-up may have reserved
    // The library only chooses among its own drivers, so this one replaces its silent driver.
    if (install_sound(DIGI_NONE, MIDI_NONE, nullptr) == 0)
        digi_driver = &card;
}

} // namespace vcc::kit
