#include "vcckit/draw/silent_sound.h"

#include <allegro.h>

namespace vcc::kit {

namespace {

constexpr int voices = 32, buffer_samples = 4096, some_rate = 22050, full = 255;

int succeed(int) {
    return 0;
}
int start_up(int, int) {
    return 0;
}
void shut_down(int) {}
int buffer() {
    return buffer_samples;
}
void ignore(int) {}
void ignore_value(int, int) {}
void ignore_sweep(int, int, int) {}
void take_sample(int, const SAMPLE*) {}
int beginning(int) {
    return 0;
}
int loudness(int) {
    return full;
}
int rate(int) {
    return some_rate;
}

DIGI_DRIVER driver() {
    DIGI_DRIVER card{};
    card.id = DIGI_NONE;
    card.name = card.desc = card.ascii_name = "silence";
    card.voices = card.max_voices = card.def_voices = voices;
    card.detect = succeed;
    card.init = start_up;
    card.exit = shut_down;
    card.set_mixer_volume = succeed;
    card.buffer_size = buffer;
    card.init_voice = take_sample;
    card.release_voice = card.start_voice = card.stop_voice = ignore;
    card.stop_volume_ramp = card.stop_frequency_sweep = card.stop_pan_sweep = ignore;
    card.loop_voice = card.set_position = card.set_volume = card.set_frequency = card.set_pan = ignore_value;
    card.ramp_volume = card.sweep_frequency = card.sweep_pan = ignore_sweep;
    card.get_position = beginning;
    card.get_volume = card.get_pan = loudness;
    card.get_frequency = rate;
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
