// Sound set-up files, beside one effect.
#include "world.h"

#include "sound/sound.h"

using namespace vcc;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::World& world = fuzz::World::start();
    static const bool started = [&world] {
        constexpr char effect[] =
            "RIFF\x26\0\0\0WAVEfmt \x10\0\0\0\1\0\1\0\x40\x1f\0\0\x40\x1f\0\0\1\0\x08\0data\2\0\0\0\x80\x90";
        std::filesystem::create_directory("sounds");
        world.write("sounds/sfx_hover.wav", {effect, sizeof effect - 1});
        world.write("sounds/theme00.wav", {effect, sizeof effect - 1});
        return install_sound(DIGI_NONE, MIDI_NONE, nullptr) == 0;
    }();
    if (!started)
        std::abort();
    world.write("a.snd", fuzz::as_text(data, size));
    sound_on = 1;
    read_sound_setup("a.snd");
    count_themes();
    play_effect(1);
    sound_on = 1;
    release_sound();
    for (SoundEntry& entry : sound_entries)
        entry = {};
    return 0;
}
