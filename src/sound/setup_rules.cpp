#include "sound/setup_rules.h"

#include "core/text.h"
#include "sound/sound.h"

namespace vcc {

namespace {

constexpr char theme_key = '\xA7'; // section sign in Windows Latin-1

SetupAction file_action(const SetupState& state) {
    if (state.entry < first_theme_entry)
        return SetupAction::load_effect;
    if (!state.is_theme)
        return SetupAction::register_file_only;
    return state.entry == state.expected_theme_entry() ? SetupAction::check_theme : SetupAction::refuse_theme;
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

} // namespace vcc
