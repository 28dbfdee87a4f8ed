// WAV files: header, effect, and the stream with its refills.
#include "sound/wav_file.h"
#include "sound/wav_stream.h"
#include "vcckit/draw/silent_sound.h"
#include "world.h"

void vcc::fuzz::one_input(std::string_view input) {
    [[maybe_unused]] static const bool started = (kit::install_silent_sound(), true);
    world().write("a.wav", input);
    static_cast<void>(load_effect_file("a.wav"));
    const auto stream = WavStream::open("a.wav", 128);
    if (!stream)
        return;
    stream->prime(false, 0);
    stream->refill(true);
}
