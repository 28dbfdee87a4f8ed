// Files that translate texts of the screens: unknown numbers, and texts that do not fit.
#include "vcckit/check/check.h"

#include "cc/option_rows.h"
#include "core/installation.h"
#include "text/fonts.h"
#include "text/screen_texts.h"

#include <optional>

namespace vcc::kit {

namespace {

using enum FaultCode;

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

void check_text(const LanguageFiles& language, const std::string& file, const Translation& text, Faults& faults) {
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

} // namespace

void check_screen_texts(Installation& installation, Faults& faults) {
    for (std::size_t i = 0; i < languages.size(); ++i) {
        const std::string file =
            "tools/language/" + std::string(languages[i].folder) + "/txt/" + std::string(languages[i].screen_texts);
        const auto& text = installation.text_file(file);
        if (!text)
            continue; // it is optional
        std::set<int> seen;
        for (const Translation& translation : read_translations(*text)) {
            check_text(installation.by_language[i], file, translation, faults);
            if (!seen.insert(translation.number).second)
                Reporter{faults, file, translation.line}(screen_text_twice, "+" + std::to_string(translation.number),
                                                         "is given twice", "the last one counts");
        }
    }
}

} // namespace vcc::kit
