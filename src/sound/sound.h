// Sound effects: the sound flags that every screen consults, and playing an effect by number.
#pragma once

#include "core/handles.h"

#include <array>
#include <string>

namespace vcc {

inline int sound_on = 1;     ///< sound is in use
inline int music_on = 0;     ///< the number of themes, 0 off; -1 marks a failed theme while the set-up file is read
inline int sfx_volume = 128; ///< playback volume of effects, 0 to 255

inline constexpr int sound_entry_count = 201; ///< entries 0 to 189 are effects, 190 to 200 music themes
inline constexpr int first_theme_entry = 190;
inline constexpr int theme_limit = 11;
inline constexpr int centre_pan = 128;
inline constexpr int volume_step = 25; ///< playback volume of one volume level (levels are 0 to 10)

struct SoundEntry {
    std::string name; ///< at most 20 characters
    std::string file; ///< at most 20 characters, below sound_directory
    SamplePtr sample; ///< effects only
};
inline std::array<SoundEntry, sound_entry_count> sound_entries;
inline std::string sound_directory; ///< empty until the set-up file names one

/// Switches sound off and installs the library's sound system without a driver.
void disable_sound();

/// Plays an effect once at sfx_volume; does nothing if sound is off or held, the number is not 1 to 200, or the entry
/// has no sample.
void play_effect(int number);

/// Stops an effect and frees its sample until the set-up file is read again.
void drop_effect(int number);

/// Number of music themes registered one after another from theme 0 on, at most 11.
int count_themes();

/// Path of an entry's file: sound directory, slash and file name, or the file name alone without a directory.
std::string sound_path(const SoundEntry& entry);

/// Releases all effects and the music stream; does nothing while sound is off.
void release_sound();

/// No effects are heard while one of these lives: screens redraw silently.
class EffectsHeld {
public:
    EffectsHeld() { ++depth_; }
    ~EffectsHeld() { --depth_; }
    EffectsHeld& operator=(EffectsHeld&&) = delete;

private:
    friend bool sfx_allowed();
    static inline int depth_ = 0;
};

/// Whether effects may play now.
inline bool sfx_allowed() {
    return EffectsHeld::depth_ == 0;
}

} // namespace vcc
