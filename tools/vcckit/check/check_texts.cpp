// Texts that the program writes, and their translations; comparison of both languages, and encodings.
#include "vcckit/check/check.h"

#include "vcckit/check/fixed_slots.h"
#include "vcckit/record/fields.h"
#include "vcckit/text/latin1.h"

#include "cc/option_rows.h"
#include "core/installation.h"
#include "screen/draw_slot.h"
#include "text/fonts.h"
#include "text/screen_texts.h"

#include <algorithm>
#include <optional>
#include <set>

namespace vcc::kit {

namespace {

using enum FaultCode;

/// Pixels for a text that the program writes into a slot: the width of its box, else up to the edge of a text window.
int room_in(const LanguageFiles& language, const Slot& slot, int window) {
    const TextWindow& at = language.windows[static_cast<std::size_t>(window)];
    const int right = at.pixel_coords ? at.right : at.right * cell_width(at.font);
    return slot.box_width > 0 ? slot.box_width : right - slot_position(slot).x;
}

void check_label(const LanguageFiles& language, ScreenKind kind, int index, std::string_view label, int window,
                 Faults& faults) {
    const ScreenFiles& screen = screen_of(language, kind);
    const Slot* const slot = find_slot(screen, index);
    if (!slot)
        return;
    const int width = text_width(slot->font, label), room = room_in(language, *slot, window);
    if (width > room)
        Reporter{faults, screen.slot_file, 0, index}(program_text_wide, "",
                                                     "the program writes \"" + std::string(label) +
                                                         "\" here: " + std::to_string(width) +
                                                         " pixels, there is room for " + std::to_string(room),
                                                     "move it, or use a smaller font");
}

struct TextPlace {
    ScreenKind screen;
    int slot;
    int window; ///< the text ends where this text window ends
};

/// Where a text is written; nothing if not into a slot of these screens.
std::optional<TextPlace> place_of(int number) {
    namespace first = screen_text_number;
    if (number >= first::explanations)
        return TextPlace{ScreenKind::info,
                         info_slot::first_line + (number - first::explanations) % info_slot::line_count, info_window};
    if (number == first::loop_all || number == first::loop_one)
        return TextPlace{ScreenKind::options, options_slot::loop_label, value_window};
    for (const OptionRow& row : option_rows()) {
        const int value = number - (row.labels.empty() ? first::themes : row.labels.first);
        if (value >= 0 && value < (row.labels.empty() ? value_entry_limit : row.labels.count))
            return TextPlace{ScreenKind::options, value_button(value), value_window};
    }
    return std::nullopt;
}

/// Pixels by which a text is too wide; not above 0 if it fits or its place is unknown.
int missing_room(const LanguageFiles& language, const Translation& text) {
    const std::optional<TextPlace> place = place_of(text.number);
    const Slot* const slot = place ? find_slot(screen_of(language, place->screen), place->slot) : nullptr;
    return slot && language.windows_usable ? text_width(slot->font, text.text) - room_in(language, *slot, place->window)
                                           : 0;
}

void check_translation(const LanguageFiles& language, const std::string& file, const Translation& text,
                       Faults& faults) {
    const Reporter report{faults, file, text.line};
    const std::string field = "+" + std::to_string(text.number);
    if (!is_screen_text(text.number)) {
        report(screen_text_number, field, "there is no such text", "docs/formats.md lists the numbers");
        return;
    }
    if (text.text.size() > screen_text_length)
        report(screen_text_long, field, "has " + std::to_string(text.text.size()) + " characters", "89 are shown");
    if (const int missing = missing_room(language, text); missing > 0)
        report(program_text_wide, field, "\"" + text.text + "\" is " + std::to_string(missing) + " pixels too wide",
               "shorten it");
}

/// Fields that must be the same in all languages, because they say what a slot does.
constexpr std::string_view common_fields[] = {"input_mode", "toggle",      "activated", "graphic",
                                              "action",     "help_number", "sound",     "sound_act"};

void compare_records(const std::vector<Slot>& first, const std::vector<Slot>& other, const std::string& file,
                     Faults& faults) {
    for (std::size_t i = 0; i < std::min(first.size(), other.size()); ++i)
        for (const std::string_view name : common_fields) {
            const Field* field = find_number_field(name);
            const int one = first[i].*field->member, two = other[i].*field->member;
            if (one != two)
                Reporter{faults, file, 0, static_cast<int>(i)}(languages_differ, std::string(name),
                                                               "is " + std::to_string(two) +
                                                                   ", in the other language " + std::to_string(one),
                                                               "languages may differ only in texts and positions");
        }
}

void compare_counts(std::size_t first, std::size_t other, const std::string& file, const char* what, Faults& faults) {
    if (first != other && first != 0 && other != 0)
        Reporter{faults, file}(counts_differ, "",
                               "has " + std::to_string(other) + " " + what + ", the other language has " +
                                   std::to_string(first),
                               "pack both languages from one source");
}

} // namespace

void check_program_texts(Installation& installation, Faults& faults) {
    for (const LanguageFiles& language : installation.by_language) {
        if (!language.windows_usable)
            continue;
        for (int value = 0; value < value_entry_limit; ++value) {
            std::string_view widest;
            for (const OptionRow& row : option_rows())
                if (!row.labels.empty() && value < row.offered && value_label(row, value).size() > widest.size())
                    widest = value_label(row, value);
            if (const auto name = installation.themes.find(value);
                name != installation.themes.end() && name->second.size() > widest.size())
                widest = name->second;
            check_label(language, ScreenKind::options, value_button(value), widest, value_window, faults);
        }
        for (int number = 0; number <= static_cast<int>(Row::loop_theme); ++number) {
            const std::optional<int> first = explanation_of(Row{number});
            for (int line = 0; first && line < explanation_lines; ++line)
                check_label(language, ScreenKind::info, line + 1, screen_text(*first + line), info_window, faults);
        }
    }
}

void check_screen_texts(Installation& installation, Faults& faults) {
    for (std::size_t i = 0; i < languages.size(); ++i) {
        const std::string file =
            "tools/language/" + std::string(languages[i].folder) + "/txt/" + std::string(languages[i].screen_texts);
        const auto& text = installation.text_file(file);
        if (!text)
            continue; // it is optional
        std::set<int> seen;
        for (const Translation& translation : read_translations(*text)) {
            check_translation(installation.by_language[i], file, translation, faults);
            if (!seen.insert(translation.number).second)
                Reporter{faults, file, translation.line}(screen_text_twice, "+" + std::to_string(translation.number),
                                                         "is given twice", "the last one counts");
        }
    }
}

void check_languages(Installation& installation, Faults& faults) {
    const LanguageFiles& first = installation.by_language.front();
    for (const LanguageFiles& other : installation.by_language) {
        for (std::size_t kind = 0; kind < screen_files.size(); ++kind) {
            const ScreenFiles &a = first.screens[kind], &b = other.screens[kind];
            compare_counts(a.set.slots.size(), b.set.slots.size(), b.slot_file, "slots", faults);
            compare_counts(a.set.toggles.size(), b.set.toggles.size(), b.toggle_file, "toggle records", faults);
            if (&first != &other)
                check_translation_of(a, b, faults);
            compare_records(a.set.slots, b.set.slots, b.slot_file, faults);
            compare_records(a.set.toggles, b.set.toggles, b.toggle_file, faults);
        }
        std::string alone;
        for (int window = 0; window < text_window_count; ++window)
            if (first.windows_usable && other.windows_usable && role_of_fixed_window(window).empty() &&
                !find_window(first, window) != !find_window(other, window))
                alone += (alone.empty() ? "+" : ", +") + std::to_string(window);
        if (!alone.empty())
            Reporter{faults, other.window_file}(window_missing, alone,
                                                std::string(alone.find(',') == std::string::npos ? "is" : "are") +
                                                    " described in one language only",
                                                "describe it in both");
        if (!installation.text_file(first.message_file) || !installation.text_file(other.message_file))
            continue; // reported where the files are read
        std::vector<int> missing;
        std::ranges::set_symmetric_difference(first.messages, other.messages, std::back_inserter(missing));
        for (const int message : missing)
            Reporter{faults, other.message_file}(message_missing, "+" + std::to_string(message),
                                                 "exists in one language only", "add it to both");
    }
}

void check_encoding(Installation& installation, Faults& faults) {
    for (const auto& [path, text] : installation.text_files) {
        if (!text || path == path::settings || path == path::buffer_list) // these are UTF-8, as names of files
            continue;
        const auto beyond_ascii = std::ranges::find_if(*text, [](char c) { return c < 0; });
        if (beyond_ascii != text->end() && is_utf8(*text))
            faults.push_back({text_utf8, path, 1 + static_cast<int>(std::count(text->begin(), beyond_ascii, '\n')), -1,
                              "", "the file is UTF-8",
                              "save it as Windows Latin-1, or each letter beyond ASCII shows as two"});
    }
}

} // namespace vcc::kit
