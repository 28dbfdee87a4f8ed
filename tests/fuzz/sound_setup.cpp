// Sound set-up files, beside one effect.
#include "sound/setup.h"
#include "sound/sound.h"
#include "world.h"

void vcc::fuzz::one_input(std::string_view input) {
    static const bool started = [] {
        constexpr char effect[] =
            "RIFF\x26\0\0\0WAVEfmt \x10\0\0\0\1\0\1\0\x40\x1f\0\0\x40\x1f\0\0\1\0\x08\0data\2\0\0\0\x80\x90";
        for (const char* name : {"sounds/sfx_hover.wav", "sounds/theme00.wav"})
            world().write(name, {effect, sizeof effect - 1});
        return install_sound(DIGI_NONE, MIDI_NONE, nullptr) == 0;
    }();
    require(started);
    world().write("a.snd", input);
    sound_on = 1;
    read_sound_setup("a.snd");
    count_themes();
    play_effect(1);
    sound_on = 1;
    release_sound();
    for (SoundEntry& entry : sound_entries)
        entry = {};
}
