#include "sound/sound.h"

#include "sound/music.h"

#include <algorithm>

namespace vcc {

namespace {

constexpr int own_pitch = 1000;

SoundEntry* entry_of_effect(int number) {
    return number > 0 && number < sound_entry_count ? &sound_entries[static_cast<std::size_t>(number)] : nullptr;
}

} // namespace

void disable_sound() {
    sound_on = 0;
    music_on = 0;
    stop_music();
    remove_sound(); // the library ignores install_sound() while a sound system is installed
    install_sound(DIGI_NONE, MIDI_NONE, nullptr);
}

void play_effect(int number) {
    const SoundEntry* const entry = entry_of_effect(number);
    if (sound_on == 0 || !sfx_allowed() || entry == nullptr || !entry->sample)
        return;
    play_sample(entry->sample.get(), std::clamp(sfx_volume, 0, 255), centre_pan, own_pitch, FALSE);
}

void drop_effect(int number) {
    if (SoundEntry* const entry = entry_of_effect(number))
        entry->sample.reset(); // the library stops a sample before it frees it
}

int count_themes() {
    const auto first = sound_entries.begin() + first_theme_entry;
    return static_cast<int>(
        std::find_if(first, sound_entries.end(), [](const SoundEntry& entry) { return entry.file.empty(); }) - first);
}

std::string sound_path(const SoundEntry& entry) {
    return sound_directory.empty() ? entry.file : sound_directory + "/" + entry.file;
}

void release_sound() {
    if (sound_on == 0)
        return;
    stop_music();
    for (SoundEntry& entry : sound_entries)
        entry.sample.reset();
}

} // namespace vcc
