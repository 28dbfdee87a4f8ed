// Help pages, texts that the program writes, comparison of both languages, and encodings.
#include "vcckit/check/check.h"

#include "vcckit/check/fixed_slots.h"
#include "vcckit/record/fields.h"
#include "vcckit/text/latin1.h"

#include "cc/option_rows.h"
#include "core/lines.h"
#include "core/text.h"
#include "interaction/help_file.h"
#include "screen/colours.h"
#include "screen/draw_slot.h"
#include "text/fonts.h"
#include "text/screen_texts.h"

#include <algorithm>

namespace vcc::kit {

namespace {

using enum FaultCode;

int line_of_entry(const std::string& text, int number) {
    LineReader lines(text);
    while (const auto line = lines.next())
        if (line->starts_with('+') && to_number(*line) == number)
            return lines.line_number();
    return 0;
}

class HelpCheck {
public:
    HelpCheck(const Installation& installation, const LanguageFiles& language, Faults& faults)
        : installation_(installation), language_(language), faults_(faults) {}

    void look_at(const ScreenFiles& screen, int index) {
        const Slot& slot = *find_slot(screen, index);
        if (slot.help_number <= 0)
            return;
        const Reporter report{faults_, screen.slot_file, 0, index};
        const std::string path = with_slashes(text_of(slot.help_file));
        const auto& text = installation_.text_file(path);
        if (!text) {
            if (!missing_.insert({screen.slot_file, path}).second)
                return;
            report(file_missing, "help_file", path.empty() ? "no help file is named" : path + " cannot be read",
                   "name a help file, or set help_number to 0");
            return;
        }
        if (read_.insert(path).second)
            check_help_text(path, *text, faults_);
        const auto entry = read_help_entry(*text, slot.help_number);
        if (!entry)
            report(help_missing, "help_number", path + " has no entry " + std::to_string(slot.help_number),
                   "add the entry, or set help_number to 0");
        else if (seen_.insert({path, slot.help_number}).second)
            look_at_entry(path, *text, *entry);
    }

private:
    void look_at_entry(const std::string& path, const std::string& text, const HelpEntry& entry) {
        const int number = entry.pages.front();
        const Reporter report{faults_, path, line_of_entry(text, number)};
        const std::string field = "+" + std::to_string(number);
        if (!entry.complete)
            report(help_unended, field, "its text runs to the end of the file",
                   "end it with a line # or the next entry");
        if (entry.lines.empty())
            report(help_empty, field, "has no text", "after seven header lines, text lines begin with -");
        if (entry.font < 0 || entry.font >= font_count)
            report(help_value, field, "there is no font " + std::to_string(entry.font), "fonts are 0 to 10");
        for (const auto& [what, colour] : {std::pair("colour ", entry.text_colour),
                                           {"colour ", entry.shadow_colour},
                                           {"window colour ", entry.window_colour}})
            if (!is_colour(colour))
                report(help_value, field, "there is no " + (what + std::to_string(colour)), "colours are 0 to 255");
        if (entry.text_colour == entry.window_colour)
            report(help_unseen, field, "its text has the colour of its window", "change C or W");
        if (installation_.listed_sounds && entry.sound != 0 && !installation_.sounds.contains(entry.sound))
            report(help_value, field, "there is no sound " + std::to_string(entry.sound),
                   "tools/vcc.snd lists the sounds; 0 is none");
        look_at_lines(path, text, number, entry, entry.lines);
        for (const int page : entry.pages) {
            if (page == number)
                continue;
            const auto lines = read_help_page(text, page);
            if (lines)
                look_at_lines(path, text, page, entry, *lines);
            else
                report(help_page_missing, field, "page " + std::to_string(page) + " is missing or has no text",
                       "add the entry, or correct the page count");
        }
    }

    void look_at_lines(const std::string& path, const std::string& text, int number, const HelpEntry& entry,
                       const std::vector<std::string>& lines) {
        const Reporter report{faults_, path, line_of_entry(text, number)};
        const std::string field = "+" + std::to_string(number);
        const Rect inside = window();
        const int x = column_x(entry.font, entry.column);
        const int bottom = (entry.row + static_cast<int>(lines.size())) * cell_height(entry.font);
        if (x < inside.x1 || entry.row * cell_height(entry.font) < inside.y1)
            report(help_outside, field, "its text begins outside the help window",
                   "columns and rows are cells of its font");
        if (bottom > inside.y2)
            report(help_outside, field, "its text extends below the help window", "begin another page");
        for (const std::string& line : lines)
            if (x + text_width(entry.font, line) > inside.x2) {
                report(help_outside, field, "\"" + line + "\" is wider than the help window", "break the line earlier");
                break;
            }
    }

    Rect window() const {
        const Slot* const page = find_slot(screen_of(language_, ScreenKind::message), message_slot::window);
        const TextWindow* const at = page ? find_window(language_, page->graphic) : nullptr;
        if (!at)
            return {0, 0, layout_width, layout_height}; // reported where the windows are checked
        return {at->left, at->top, at->right, at->bottom};
    }

    const Installation& installation_;
    const LanguageFiles& language_;
    Faults& faults_;
    std::set<std::string> read_;
    std::set<std::pair<std::string, int>> seen_;
    std::set<std::pair<std::string, std::string>> missing_; ///< reported once per screen
};

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

int room_in(const LanguageFiles& language, const Slot& slot, int window) {
    const TextWindow& at = language.windows[static_cast<std::size_t>(window)];
    const int right = at.pixel_coords ? at.right : at.right * cell_width(at.font);
    return slot.box_width > 0 ? slot.box_width : right - slot_position(slot).x;
}

void check_help(Installation& installation, Faults& faults) {
    for (const LanguageFiles& language : installation.by_language) {
        HelpCheck check(installation, language, faults);
        for (const ScreenFiles& screen : language.screens)
            for (int index = 0; index < screen.set.slot_count(); ++index)
                check.look_at(screen, index);
    }
}

void check_program_texts(Installation& installation, Faults& faults) {
    for (const LanguageFiles& language : installation.by_language) {
        if (!language.windows_usable)
            continue;
        for (int value = 0; value < value_entry_limit; ++value) {
            std::string_view widest;
            for (const OptionRow& row : option_rows())
                if (!row.labels.empty() && value < row.offered && value_label(row, value).size() > widest.size())
                    widest = value_label(row, value);
            if (const auto name = installation.theme_names.find(value);
                name != installation.theme_names.end() && name->second.size() > widest.size())
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
