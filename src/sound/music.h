// Background music: one theme at a time, streamed from its WAV file. There is no timer: whoever waits feeds the stream.
#pragma once

namespace vcc {

extern int music_playing; ///< 1: the music voice runs; 0: the player has stopped it. 1 at start
extern int music_volume;  ///< playback volume, 0 to 255; 75 at start
extern int current_theme; ///< theme that the screens consider playing; -1: no music is to be fed. 0 at start
extern int theme_shown;   ///< theme that the refill is streaming in loop-all mode. 0 at start

/// What follows at the end of a theme; whoever owns the settings answers this at every refill.
struct ThemeOrder {
    bool loop_all = false; ///< false: the theme repeats without a gap
    int next = 0;          ///< theme to start once this one has been heard to its end
};
using ThemeOrderSource = ThemeOrder (*)();
void set_theme_order_source(ThemeOrderSource source);

/// Streams a theme (0 to 10) from its beginning; nothing happens when it is current and a stream exists. On failure
/// (alert and log are done here) music_on becomes 0 and the result is false. The caller sets current_theme and calls
/// set_music_volume().
bool start_theme(int theme, int volume);

/// Stops the stream and closes its file; nothing without a stream.
void stop_music();

/// Sets the volume and looping of the music voice; nothing while sound, music or effects are off.
void set_music_volume(int volume);

/// Refills the stream when it asks for it; returns theme_shown.
int feed_music();

/// Installs feed_music() as the work that goes on while the program waits. Called once at start-up.
void install_music_feeding();

/// Stops or starts the music voice; nothing without a stream. music_playing is not touched.
void pause_music_voice();
void resume_music_voice();

/// The F12 key: when sound and music are on, stops or starts the voice and flips music_playing.
void toggle_music();

/// Whether a stream exists whose voice is not paused.
bool music_voice_running();

} // namespace vcc
