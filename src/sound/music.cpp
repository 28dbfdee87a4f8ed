#include "sound/music.h"

#include "core/alert.h"
#include "core/clock.h"
#include "core/log.h"
#include "sound/sound.h"
#include "sound/wav_stream.h"

namespace vcc {

namespace {

std::unique_ptr<WavStream> music_stream;
ThemeOrderSource theme_order = [] { return ThemeOrder{false, themes.streaming}; };

bool music_wanted() {
    return sound_on != 0 && music_on != 0 && music_playing != 0 && themes.shown >= 0;
}

} // namespace

void set_theme_order_source(ThemeOrderSource source) {
    theme_order = source;
}

bool start_theme(int theme, int volume) {
    if (theme == themes.streaming && music_stream)
        return true;
    stop_music();
    const bool exists = theme >= 0 && theme < theme_limit;
    const auto index = static_cast<std::size_t>(first_theme_entry + theme);
    const std::string path = exists ? sound_path(sound_entries[index]) : sound_directory + "/";
    if (exists)
        music_stream = WavStream::open(path, volume);
    if (!music_stream) {
        const std::string message = format_text("Error loading audio stream file: %s (theme:%d)", path.c_str(), theme);
        write_log(message);
        show_alert(message);
        music_on = 0;
        return false;
    }
    themes.streaming = theme; // if all themes play in turn, the next one follows it
    music_stream->prime(theme_order().loop_all, theme_fade_in);
    resume_music_voice();
    return true;
}

void stop_music() {
    music_stream.reset();
}

void set_music_volume(int volume) {
    if (music_on != 0 && sound_on != 0 && sfx_allowed() && music_stream)
        music_stream->set_volume(volume);
}

int feed_music() {
    // A paused voice has no position, so the library would take both halves for played.
    if (sound_on == 0 || music_on == 0 || music_playing == 0 || !music_stream || music_stream->paused())
        return themes.streaming;
    const ThemeOrder order = theme_order();
    if (music_stream->refill(order.loop_all) == WavStream::Refill::finished) {
        themes.streaming = order.next;
        stop_music(); // or start_theme() would not start the same theme again
        start_theme(order.next, music_volume);
    }
    return themes.streaming;
}

void install_music_feeding() {
    set_idle_task({music_wanted, [] { feed_music(); }});
}

void pause_music_voice() {
    if (music_stream)
        music_stream->pause();
}

void resume_music_voice() {
    if (music_stream && music_playing != 0)
        music_stream->resume();
}

void toggle_music() {
    if (sound_on == 0 || music_on == 0)
        return;
    music_playing = music_playing != 0 ? 0 : 1;
    if (music_playing != 0)
        resume_music_voice();
    else
        pause_music_voice();
}

bool music_voice_running() {
    return music_stream && !music_stream->paused();
}

} // namespace vcc
