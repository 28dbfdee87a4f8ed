// Background music: one theme at a time, streamed from its WAV file. No timer feeds the stream; whoever waits does.
#pragma once

namespace vcc {

inline int music_playing = 1; ///< 1: the music voice runs; 0: the player has stopped it
inline int music_volume = 75; ///< playback volume, 0 to 255
inline int theme_fade_in = 0; ///< milliseconds in which a theme rises from silence when it begins

/// Theme numbers.
struct Themes {
    int streaming = 0; ///< what is heard
    int shown = 0;     ///< what the screens consider playing; -1: no music is to be fed
};
inline Themes themes;
inline int &theme_shown = themes.streaming, &current_theme = themes.shown; // as the callers of music name them

/// What follows at the end of a theme; the owner of the settings answers this at every refill.
struct ThemeOrder {
    bool loop_all = false; ///< false: the theme repeats without a gap
    int next = 0;          ///< theme to start after this one
};
using ThemeOrderSource = ThemeOrder (*)();
void set_theme_order_source(ThemeOrderSource source);

/// Streams a theme (0 to 10) from its beginning; does nothing if it is already streaming. On failure (shown and logged
/// here) sets music_on to 0 and returns false. The caller sets current_theme and calls set_music_volume().
bool start_theme(int theme, int volume);

void stop_music();

/// Sets the volume and looping of the music voice; does nothing while sound, music or effects are off.
void set_music_volume(int volume);

/// Refills the stream if it needs data; returns theme_shown.
int feed_music();

/// Installs feed_music() as the idle task. Called once at start-up.
void install_music_feeding();

/// Stop or start the music voice, if there is a stream. They leave music_playing unchanged.
void pause_music_voice();
void resume_music_voice();

/// The F12 key: if sound and music are on, stops or starts the voice and flips music_playing.
void toggle_music();

/// Whether there is a stream and its voice is not paused.
bool music_voice_running();

} // namespace vcc
