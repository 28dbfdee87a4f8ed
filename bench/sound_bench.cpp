// Music: filling one buffer of the stream.
#include "core/handles.h"
#include "figure.h"
#include "sound/sound.h"
#include "sound/wav_file.h"
#include "sound/wav_stream.h"
#include "still_sound.h"
#include "world.h"

#include <cstdio>

namespace vcc::bench {

namespace {

void refill_music_buffer(benchmark::State& state) {
    constexpr const char* path = "sounds/theme00.wav";
    const WavHeader header = parse_wav_header(path);
    const auto stream = WavStream::open(path, 100);
    const FilePtr file(std::fopen(path, "rb"));
    if (header.data_offset == 0 || !stream || !file) {
        state.SkipWithError("the first theme cannot be opened");
        return;
    }
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    const long size = long{stream_samples} * (header.bits / 8) * header.channels;
    std::vector<unsigned char> memory(static_cast<std::size_t>(size));
    std::fseek(file.get(), header.data_offset, SEEK_SET);
    long left = header.data_length;
    offer_buffers(true);
    compare(
        state, 1.5,
        [&] {
            if (stream->refill(false) != WavStream::Refill::filled)
                std::abort();
        },
        [&] { // the same bytes: from the beginning again where less than a buffer is left
            if (left < size) {
                std::fseek(file.get(), header.data_offset, SEEK_SET);
                left = header.data_length;
            }
            left -= size;
            if (std::fread(memory.data(), 1, memory.size(), file.get()) != memory.size())
                std::abort();
        });
    offer_buffers(false);
    state.counters["bytes"] = static_cast<double>(size);
}
VELDOR_FIGURE(refill_music_buffer);

} // namespace

} // namespace vcc::bench
