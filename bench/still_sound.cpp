#include "still_sound.h"

#include "settings/settings.h"
#include "sound/music.h"
#include "sound/sound.h"

#include <allegro.h>

#include <vector>

namespace {

AUDIOSTREAM stream{};
std::vector<unsigned char> buffer;
bool buffers_offered = false;

} // namespace

// The library's own stream needs a device, even a silent one.
extern "C" {
AUDIOSTREAM* play_audio_stream(int length, int bits, int stereo, int, int, int) {
    buffer.assign(static_cast<std::size_t>(length) * static_cast<std::size_t>(bits / 8) * (stereo ? 2u : 1u), 0);
    stream = {};
    return &stream;
}
void stop_audio_stream(AUDIOSTREAM*) {}
void* get_audio_stream_buffer(AUDIOSTREAM*) {
    return buffers_offered ? buffer.data() : nullptr;
}
void free_audio_stream_buffer(AUDIOSTREAM*) {}
void voice_start(int) {}
void voice_stop(int) {}
void voice_set_priority(int, int) {}
void voice_set_volume(int, int) {}
void voice_set_position(int, int) {}
void voice_set_playmode(int, int) {}
}

namespace vcc::bench {

StillSound::StillSound() {
    sound_directory = "sounds";
    sound_entries[first_theme_entry].file = "theme00.wav";
    sound_on = music_on = number_of_themes = music_playing = 1;
    offer_buffers(false);
    current_theme = 0;
    start_theme(0, music_volume);
}

StillSound::~StillSound() {
    stop_music();
    sound_on = music_on = number_of_themes = 0;
}

void offer_buffers(bool offered) {
    buffers_offered = offered;
}

} // namespace vcc::bench
