// The sound set-up file: what each of its lines means, and reading it.
#pragma once

#include <string>
#include <string_view>

namespace vcc {

enum class SetupAction {
    none,
    stop,              ///< entry number out of range; entries read so far stay
    install,           ///< start the sound system
    set_directory,     ///< value: the sound directory
    set_name,          ///< value: the name of the entry
    load_effect,       ///< value: the file of the entry
    check_theme,       ///< value: the file of the entry, which must exist
    refuse_theme,      ///< value: the file of a theme out of order
    register_file_only ///< value: the file of a theme's entry that no line announced
};

struct SetupStep {
    SetupAction action = SetupAction::none;
    std::string_view value; ///< part of the line

    bool names_file() const { return action >= SetupAction::load_effect; }
};

inline constexpr int theme_failed = -1; ///< SetupState::themes after an unusable theme: no music at all

struct SetupState {
    int entry = 0;         ///< 0 to 200
    bool is_theme = false; ///< the entry's name line announced a theme
    int themes = 0;        ///< themes announced so far, or theme_failed
    int handled = 0;       ///< file lines so far

    int expected_theme_entry() const; ///< entry that the latest theme must have
};

/// Applies one line (without its line feed) to the state and returns what to do for state.entry. Pure.
SetupStep next_setup_step(SetupState& state, std::string_view line);

/// Reads the set-up file, installs the sound system, loads the effects and registers the themes. Returns the number of
/// file lines handled; 0 if the file cannot be opened or an effect cannot be loaded. Shows and logs failures that
/// matter to the player.
int read_sound_setup(const std::string& path);

} // namespace vcc
