// The sound set-up file, and the files that it names.
#include "vcckit/check/installation.h"
#include "vcckit/media/themes.h"

#include "core/lines.h"
#include "core/text.h"
#include "platform/files.h"
#include "settings/settings.h"
#include "settings/values.h"
#include "sound/setup.h"
#include "sound/sound.h"
#include "sound/wav_file.h"

#include <algorithm>

namespace vcc::kit {

namespace {

using enum FaultCode;

constexpr std::size_t name_limit = 20;
constexpr int film_sound = 181; ///< and the next one

class SetupWalk {
public:
    SetupWalk(Installation& installation, Faults& faults) : installation_(installation), faults_(faults) {}

    void run(const std::string& text) {
        LineReader lines(text);
        while (const auto line = lines.next()) {
            line_ = lines.line_number();
            const SetupStep step = next_setup_step(state_, *line);
            switch (step.action) {
            case SetupAction::none:
                if (!line->empty() && (*line)[0] != '#' && (*line)[0] != '+')
                    report(sound_line, "the line is ignored", "lines begin with #, +, &, $, *, - or the section sign");
                break;
            case SetupAction::stop:
                report(sound_entry_unknown, "there is no entry " + std::string(line->substr(1)),
                       "entries are 0 to 200");
                return;
            case SetupAction::install:
                installed_ = true;
                break;
            case SetupAction::set_directory:
                directory_ = step.value;
                break;
            case SetupAction::set_name:
                name_ = step.value.substr(0, name_limit);
                if (step.value.size() > name_limit)
                    report(sound_name_long, "the name is longer than 20 characters", "it is cut");
                break;
            case SetupAction::refuse_theme:
                report(FaultCode::theme_order, "theme out of order",
                       "the next theme is entry " + std::to_string(state_.expected_theme_entry()));
                state_.themes = theme_failed;
                break;
            case SetupAction::load_effect:
            case SetupAction::check_theme:
            case SetupAction::register_file_only:
                take_file(step);
                break;
            }
        }
        line_ = 0;
        if (!installed_)
            report(sound_entry_missing, "no \"*\" line", "without it the sound system does not start");
    }

private:
    void report(FaultCode code, std::string problem, std::string advice) {
        faults_.push_back({code, path::sound_setup, line_, -1, "", std::move(problem), std::move(advice)});
    }

    void take_file(const SetupStep& step) {
        const std::string path = (directory_.empty() ? "" : directory_ + "/") + std::string(step.value);
        installation_.named.insert(path);
        if (step.value.size() > name_limit)
            report(sound_name_long, "the file name is longer than 20 characters", "it is cut, and the file not found");
        if (!installation_.sounds.insert(state_.entry).second)
            report(sound_entry_twice, "entry " + std::to_string(state_.entry) + " is given twice",
                   "the last one counts");
        if (state_.entry == 0)
            report(sound_entry_unknown, "entry 0 is never played", "use 1 to 189");
        if (!platform::file_exists(path)) {
            report(file_missing, path + " does not exist", "add the file, or remove the entry");
            return;
        }
        if (step.action == SetupAction::load_effect) {
            if (const auto effect = load_effect_file(path); !effect)
                report(sound_unreadable, path + " " + effect.reason(), "convert it: otherwise all sound stays off");
            else if (is_cut(path))
                report(file_cut, path + " is truncated", "create the file again");
            return;
        }
        installation_.themes[state_.entry - first_theme_entry] = name_;
        if (step.action == SetupAction::register_file_only)
            report(FaultCode::theme_order, "entries from 190 on are music themes",
                   "its name line begins with the section sign");
        if (const std::string fault = loop_fault(path); !fault.empty())
            report(theme_seam, path + " " + fault, "make it PCM that loops: its end must run into its beginning");
        else if (is_cut(path))
            report(file_cut, path + " is truncated", "create the file again");
    }

    Installation& installation_;
    Faults& faults_;
    SetupState state_;
    int line_ = 0;
    bool installed_ = false;
    std::string directory_, name_;
};

/// The themes chosen by the settings.
void check_chosen_themes(const Installation& installation, Faults& faults) {
    for (const SettingRow& row : rows::all) {
        const auto* place = std::get_if<int*>(&row.place);
        if (!place ||
            std::ranges::find(settings.theme, *place, [](int& theme) { return &theme; }) == settings.theme.end())
            continue;
        const int chosen = stored_number(row);
        if (chosen >= static_cast<int>(installation.themes.size()))
            Reporter{faults, path::settings}(theme_unknown, std::string(row.key),
                                             "there is no theme " + std::to_string(chosen),
                                             "tools/vcc.snd names " + std::to_string(installation.themes.size()));
    }
}

} // namespace

void read_sounds(Installation& installation, Faults& faults) {
    const Reporter report{faults, path::sound_setup};
    const auto& text = installation.text_file(path::sound_setup);
    if (!text) {
        report(file_missing, "", text.reason(), "write the list, or there is no sound; docs/formats.md describes it");
        return;
    }
    SetupWalk(installation, faults).run(*text);
    installation.listed_sounds = !installation.sounds.empty();
    for (const int sound : {film_sound, film_sound + 1})
        if (installation.listed_sounds && !installation.sounds.contains(sound))
            report(sound_entry_missing, "+" + std::to_string(sound), "is missing",
                   "add the entry: it is the sound of a film");
    if (installation.listed_sounds && installation.themes.empty())
        report(sound_entry_missing, "+190", "is missing", "add a theme, or there is no music");
    if (!installation.themes.empty())
        check_chosen_themes(installation, faults);
}

} // namespace vcc::kit
