#include "sound/setup.h"

#include "core/alert.h"
#include "core/files.h"
#include "core/lines.h"
#include "core/log.h"
#include "core/text.h"
#include "platform/files.h"
#include "sound/sound.h"
#include "sound/wav_file.h"

#include <algorithm>

namespace vcc {

namespace {

constexpr std::size_t name_limit = 20;
constexpr int reserved_voices = 16;
constexpr char theme_key = '\xA7'; // section sign in Windows Latin-1

SetupAction file_action(const SetupState& state) {
    if (state.entry < first_theme_entry)
        return SetupAction::load_effect;
    if (!state.is_theme)
        return SetupAction::register_file_only;
    return state.entry == state.expected_theme_entry() ? SetupAction::check_theme : SetupAction::refuse_theme;
}

/// From the second pass on it is installed already; the library then returns success.
bool install_sound_system(SetupState& state) {
    reserve_voices(reserved_voices, 0);
    if (install_sound(DIGI_AUTODETECT, MIDI_NONE, nullptr) == 0)
        return true;
    alert_and_log("Error initialising sound", format_text("Error initialising sound: %s\n", allegro_error));
    disable_sound();
    state.themes = 0;
    return false;
}

bool load_effect(SetupState& state, SoundEntry& entry) {
    entry.sample = load_effect_file(sound_path(entry)).value_or(nullptr);
    if (entry.sample)
        return true;
    write_log(format_text("Error loading sound nr:%d\n", state.entry));
    disable_sound();
    state = {};
    return false;
}

void refuse_theme(SetupState& state, SoundEntry& entry, const char* mark, const std::string& message) {
    write_log(message);
    entry.name = mark;
    state.themes = theme_failed;
}

/// False ends the reading.
bool apply_step(const SetupStep& step, SetupState& state) {
    SoundEntry& entry = sound_entries[static_cast<std::size_t>(state.entry)];
    if (step.names_file())
        entry.file = step.value.substr(0, name_limit);
    switch (step.action) {
    case SetupAction::none:
    case SetupAction::register_file_only:
        break;
    case SetupAction::stop:
        return false;
    case SetupAction::install:
        return install_sound_system(state);
    case SetupAction::set_directory:
        sound_directory = step.value;
        break;
    case SetupAction::set_name:
        entry.name = step.value.substr(0, name_limit);
        break;
    case SetupAction::load_effect:
        return load_effect(state, entry);
    case SetupAction::check_theme:
        if (!platform::file_exists(sound_path(entry)))
            refuse_theme(state, entry, "THEME_ERROR 2",
                         format_text("Error loading music theme nr:%d (%s)\n", state.entry, entry.name.c_str()));
        break;
    case SetupAction::refuse_theme:
        refuse_theme(
            state, entry, "THEME_ERROR 1",
            format_text("Error loading music -> music_nr:%d count:%d\n", state.entry, state.expected_theme_entry()));
        break;
    }
    return true;
}

} // namespace

int SetupState::expected_theme_entry() const {
    return first_theme_entry + themes - 1;
}

SetupStep next_setup_step(SetupState& state, std::string_view line) {
    if (line.empty())
        return {};
    const std::string_view value = line.substr(1);
    switch (line.front()) {
    case '+': {
        const int entry = to_number(line); // the key is the number's sign
        if (entry < 0 || entry >= sound_entry_count)
            return {SetupAction::stop, {}};
        state.entry = entry;
        return {};
    }
    case '&':
        state.is_theme = false;
        return {SetupAction::set_name, value};
    case theme_key:
        if (state.themes == theme_failed)
            return {};
        state.is_theme = true;
        ++state.themes;
        return {SetupAction::set_name, value};
    case '$':
        return {SetupAction::set_directory, value};
    case '*':
        return {SetupAction::install, {}};
    case '-':
        if (state.is_theme && state.themes == theme_failed)
            return {};
        ++state.handled;
        return {file_action(state), value};
    default:
        return {};
    }
}

int read_sound_setup(const std::string& path) {
    music_on = 0;
    const auto text = read_file(path);
    if (!text) {
        alert_and_log(format_text("Error opening Sound-Init-File => %s\n", path.c_str()));
        return 0;
    }
    sound_directory.clear();
    SetupState state;
    LineReader lines(*text);
    while (const auto line = lines.next()) {
        const bool goes_on = apply_step(next_setup_step(state, *line), state);
        music_on = state.themes;
        if (!goes_on)
            break;
    }
    music_on = std::clamp(state.themes, 0, theme_limit);
    return state.handled;
}

} // namespace vcc
