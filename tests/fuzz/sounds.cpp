// WAV files: header, effect, and the stream with its refills.
#include "world.h"

#include "silent_sound.h"
#include "sound/effect_file.h"
#include "sound/wav_header.h"
#include "sound/wav_stream.h"

using namespace vcc;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::World& world = fuzz::World::start();
    static const bool started = [] {
        kit::install_silent_sound();
        return true;
    }();
    (void)started;
    world.write("a.wav", fuzz::as_text(data, size));
    load_effect_file("a.wav");
    const auto stream = WavStream::open("a.wav", 128);
    if (!stream)
        return 0;
    stream->prime(false);
    stream->refill(true);
    return 0;
}
