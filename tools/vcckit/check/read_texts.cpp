// Settings, message files and text-window files, line by line.
#include "vcckit/check/config_walk.h"
#include "vcckit/check/installation.h"
#include "vcckit/record/setting_rows.h"
#include "vcckit/record/window_fields.h"
#include "vcckit/source/packed_screen.h"

#include "core/lines.h"
#include "core/text.h"
#include "platform/latin1.h"
#include "screen/text_window.h"
#include "text/fonts.h"
#include "text/language.h"

#include <algorithm>
#include <utility>

namespace vcc::kit {

using platform::same_but_for_case;

namespace {

using enum FaultCode;

/// Sections with keys of the control centre only.
bool all_keys_are_known(std::string_view section) {
    constexpr std::string_view known[] = {"VELDOR_SOUND", "VELDOR_GRAPHICS", "VELDOR_GENERAL"};
    return std::ranges::any_of(known, [&](std::string_view name) { return same_but_for_case(name, section); });
}

/// What is wrong with a value; empty if nothing is.
std::string fault_of_value(const SettingRow& row, std::string_view value) {
    if (row.kind == SettingKind::flag)
        return value == "yes" || value == "no" ? "" : "is neither yes nor no";
    if (row.kind == SettingKind::text)
        return static_cast<long long>(value.size()) > row.max
                   ? "is longer than " + std::to_string(row.max) + " characters"
                   : "";
    const auto number = whole_number(value);
    if (!number)
        return "is not a number";
    return *number < row.min || *number > row.max
               ? "is outside " + std::to_string(row.min) + " to " + std::to_string(row.max)
               : "";
}

/// Reports unknown sections, which are most likely misspelt; those of modules have other names.
bool is_misspelt(std::string_view section) {
    constexpr std::string_view ours = "VELDOR_";
    return same_but_for_case(section.substr(0, ours.size()), ours) &&
           std::ranges::none_of(rows::all,
                                [&](const SettingRow& row) { return same_but_for_case(row.section, section); });
}

void check_setting(const ConfigEntry& entry, Faults& faults) {
    const Reporter report{faults, path::settings, entry.line};
    if (entry.key.empty()) {
        if (is_misspelt(entry.section))
            report(section_unknown, "", "there is no section [" + entry.section + "]",
                   "docs/settings.md lists the sections");
        return;
    }
    if (entry.section.empty())
        report(setting_without_section, entry.key, "is before the first section", "move it below its [section]");
    const SettingRow* row = find_setting_row(entry.section, entry.key);
    if (!row) {
        if (all_keys_are_known(entry.section))
            report(setting_unknown, entry.key, "no such key in [" + entry.section + "]",
                   "correct its spelling, or remove it");
        return;
    }
    if (const std::string fault = fault_of_value(*row, entry.value); !fault.empty())
        report(FaultCode::setting_value, entry.key, "\"" + entry.value + "\" " + fault,
               "docs/settings.md lists the values of the key");
}

void check_window_edges(const std::string& file, int number, const TextWindow& window, Faults& faults) {
    const auto report = [&](const char* field, std::string problem, const char* advice) {
        faults.push_back({FaultCode::window_edges, file, 0, -1, "+" + std::to_string(number) + ": " + field,
                          std::move(problem), advice});
    };
    if (window.left >= window.right)
        report("xo, xu", "the right edge is not right of the left edge", "correct xo or xu");
    if (window.top >= window.bottom)
        report("yo, yu", "the bottom edge is not below the top edge", "correct yo or yu");
    const bool cells = window.pixel_coords == 0;
    const int width = cells && cell_width(window.font) > 0 ? layout_width / cell_width(window.font) : layout_width;
    const int height = cells && cell_height(window.font) > 0 ? layout_height / cell_height(window.font) : layout_height;
    if (window.left < 0 || window.right > width)
        report("xo, xu", "extends outside the screen", cells ? "columns are cells of font t" : "keep to 0 to 800");
    if (window.top < 0 || window.bottom > height)
        report("yo, yu", "extends outside the screen", cells ? "rows are cells of font t" : "keep to 0 to 600");
    for (const int sound : {window.open_sound, window.close_sound})
        if (sound < 0 || sound > 200)
            report("o, e", "sound " + std::to_string(sound) + " is outside 0 to 200", "0 is no sound");
}

/// Reads the file again for what the program's reader ignores.
void check_window_lines(const std::string& file, const std::string& text, LanguageFiles& language, Faults& faults) {
    LineReader lines(text);
    int number = 0;
    while (const auto line = lines.next()) {
        const Reporter report{faults, file, lines.line_number()};
        if (line->starts_with('+')) {
            number = to_number(line->substr(1));
            if (number < 0 || number >= text_window_count) {
                report(window_number, "+", "there is no window " + std::to_string(number), "windows are 0 to 29");
                if (number >= text_window_count)
                    return; // the program stops here
                number = -1;
            }
            continue;
        }
        if (number < 0 || line->empty())
            continue;
        if (line->starts_with('-'))
            language.windows_described.set(static_cast<std::size_t>(number));
        for (const WindowField& field : window_fields) {
            if (field.key.empty() || !line->starts_with(field.key))
                continue;
            const int value = to_number(line->substr(field.key.size()));
            if (!field.allowed.empty() && ((value < field.min && !field.any_below) || value > field.max))
                report(FaultCode::window_value, std::string(field.key), std::to_string(value) + " is out of range",
                       std::string(field.allowed));
            break;
        }
        if ((*line)[0] == 'x' || (*line)[0] == 'y')
            if (line->size() < 2 || ((*line)[1] != 'o' && (*line)[1] != 'u'))
                report(window_line, std::string(line->substr(0, 2)), "the line is ignored",
                       "edges are xo, yo, xu and yu");
    }
}

} // namespace

void read_settings(Installation& installation, Faults& faults) {
    const auto& text = installation.text_file(path::settings);
    if (!text) {
        Reporter{faults, path::settings}(file_missing, "", "cannot be read", "the program would use its own defaults");
        return;
    }
    const std::string values = platform::latin1_from_utf8(*text);
    set_config_data(values.c_str(), static_cast<int>(values.size()));
    walk_config(path::settings, *text, faults, [&](const ConfigEntry& entry) { check_setting(entry, faults); });
}

void read_windows(Installation& installation, Faults& faults) {
    for (std::size_t i = 0; i < languages.size(); ++i) {
        LanguageFiles& language = installation.by_language[i];
        language.window_file = language_file_name(languages[i], path::text_windows);
        const auto& text = installation.text_file(language.window_file);
        if (!text || read_text_windows(*text, language.windows) == 0) {
            Reporter{faults, language.window_file}(text ? window_missing : file_missing, "",
                                                   text ? "describes no window" : text.reason(),
                                                   "describe the windows; each has a \"-\" line", true);
            continue;
        }
        language.windows_usable = true;
        check_window_lines(language.window_file, *text, language, faults);
        for (std::size_t window = 0; window < language.windows.size(); ++window)
            if (language.windows_described[window] && window != style_window)
                check_window_edges(language.window_file, static_cast<int>(window), language.windows[window], faults);
    }
}

void read_messages(Installation& installation, Faults& faults) {
    const std::string choice = with_slashes(path::language_choice);
    const auto& chosen = installation.text_file(choice);
    if (!chosen || (!chosen->starts_with('1') && !chosen->starts_with('2')))
        Reporter{faults, choice, 1}(FaultCode::language_choice, "",
                                    chosen ? "does not choose a language" : "cannot be read",
                                    "its first character must be 1 for English or 2 for German");
    for (std::size_t i = 0; i < languages.size(); ++i) {
        LanguageFiles& language = installation.by_language[i];
        language.message_file =
            "tools/language/" + std::string(languages[i].folder) + "/txt/" + std::string(languages[i].messages);
        const auto& text = installation.text_file(language.message_file);
        if (!text) {
            Reporter{faults, language.message_file}(file_missing, "", "cannot be read", "messages would be empty");
            continue;
        }
        NumberedLines lines(*text);
        bool filled = true;
        while (const auto line = lines.next()) {
            const Reporter report{faults, language.message_file, lines.line_number()};
            const int index = line->number.value_or(-1);
            if (line->kind == NumberedLine::Kind::number) {
                filled = false;
                if (index < 0 || index >= message_limit)
                    report(message_number, "", "there is no message " + std::to_string(index), "messages are 0 to 299");
                else if (!language.messages.insert(index).second)
                    report(message_twice, "", "message " + std::to_string(index) + " is given twice",
                           "the last one counts");
            } else if (line->kind == NumberedLine::Kind::comment) {
                continue;
            } else if (index < 0) {
                report(FaultCode::message_line, "", "a text before the first message number",
                       "put a line +0 to +299 before it");
            } else if (std::exchange(filled, true)) {
                report(FaultCode::message_line, "", "message " + std::to_string(index) + " has a second line",
                       "only its last line is kept");
            }
        }
    }
}

} // namespace vcc::kit
