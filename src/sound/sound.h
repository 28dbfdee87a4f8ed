// Sound effects: the set-up file that lists them, the sound flags that every screen consults, and playing an effect by
// number.
#pragma once

#include "core/handles.h"

#include <array>
#include <string>

namespace vcc {

extern int sound_on; ///< sound is in use; 1 at start
extern int music_on; ///< music is in use: number of themes after the set-up file is read; -1 marks a failed theme while
                     ///< it is read
extern int sfx_allowed; ///< effects may play at this moment; cleared while screens redraw
extern int sfx_volume;  ///< playback volume of effects, 0 to 255

inline constexpr int sound_entry_count = 201; ///< entries 0 to 189 are effects, 190 to 200 music themes
inline constexpr int first_theme_entry = 190;
inline constexpr int theme_limit = 11;
inline constexpr int volume_step = 25; ///< playback volume of one volume level (levels are 0 to 10)

struct SoundEntry {
    std::string name; ///< at most 20 characters
    std::string file; ///< at most 20 characters, below sound_directory
    SamplePtr sample; ///< effects only
};
extern std::array<SoundEntry, sound_entry_count> sound_entries;
extern std::string sound_directory; ///< empty until the set-up file names one

/// Reads the set-up file, installs the sound system, loads the effects and registers the themes. Returns the number of
/// file lines handled; 0 when the file cannot be opened or an effect cannot be loaded. Failures that the player must
/// know are shown and logged here.
int read_sound_setup(const std::string& path);

/// Switches sound off and installs the library's sound system without drivers.
void disable_sound();

/// Marks sound as in use and effects as allowed.
void enable_sound();

/// Plays an effect once at sfx_volume; nothing when sound is off or held, the number is not 1 to 200, or the entry
/// holds no sample.
void play_effect(int number);

/// Stops an effect and empties its entry until the set-up file is read again.
void drop_effect(int number);

/// Number of music themes registered one after another from theme 0 on, at most 11.
int count_themes();

/// Path of an entry's file: the sound directory, a slash and the file name; without a directory the file name alone.
std::string sound_path(const SoundEntry& entry);

/// Releases every effect and the music stream; nothing while sound is off.
void release_sound();

/// Holds effects off for the life of the object; the outermost one sets sfx_allowed to 1 at its end.
class EffectsHeld {
public:
    EffectsHeld() {
        ++depth_;
        sfx_allowed = 0;
    }
    ~EffectsHeld() {
        if (--depth_ == 0)
            sfx_allowed = 1;
    }
    EffectsHeld(const EffectsHeld&) = delete;
    EffectsHeld& operator=(const EffectsHeld&) = delete;

private:
    static inline int depth_ = 0;
};

} // namespace vcc
