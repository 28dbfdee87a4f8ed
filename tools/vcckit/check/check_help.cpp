// Help pages: what the program cuts or misreads in their files, and what does not fit in their window.
#include "vcckit/check/check.h"

#include "core/installation.h"
#include "core/lines.h"
#include "core/text.h"
#include "interaction/help_file.h"
#include "screen/colours.h"
#include "text/fonts.h"

#include <algorithm>
#include <cctype>
#include <deque>
#include <iterator>
#include <optional>
#include <set>
#include <string>

namespace vcc::kit {

namespace {

using enum FaultCode;

/// The labels of header lines in order; the numbers of further pages follow the first.
struct HeaderRow {
    std::string_view labels;
    std::string_view what;
};
constexpr HeaderRow headers[] = {{"p", "number of pages"}, {"f", "font"},    {"c", "text colour"},
                                 {"w", "window colour"},   {"hs", "shadow"}, {"st", "sound"},
                                 {"x", "column"},          {"y", "row"}};
constexpr HeaderRow further_page{"nq", "number of a further page"};

/// What is still to come of the header of an entry: the order of its lines alone matters to the program.
class HeaderWalk {
public:
    /// What is wrong with a line; empty if nothing is, or if it does not belong to a header.
    std::string take(std::string_view line) {
        if (line.empty() || line[0] == '-' || line[0] == '#')
            expected_.clear();
        if (expected_.empty())
            return {};
        const HeaderRow row = expected_.front();
        expected_.pop_front();
        if (row.labels.find(static_cast<char>(std::tolower(static_cast<unsigned char>(line[0])))) ==
            std::string_view::npos) {
            expected_.clear(); // the lines after it are out of order, too
            return "\"" + std::string(line) + "\" stands where the " + std::string(row.what) + " is read";
        }
        if (row.labels == headers[0].labels)
            expected_.insert(expected_.begin(),
                             static_cast<std::size_t>(std::clamp(to_number(line.substr(1)) - 1, 0, 8)), further_page);
        return {};
    }

private:
    std::deque<HeaderRow> expected_{std::begin(headers), std::end(headers)};
};

/// Whether a text line begins without the character that the program drops.
bool loses_its_first_letter(std::string_view line) {
    return line.size() > 1 && (std::isalnum(static_cast<unsigned char>(line[1])) != 0 || line[1] < 0);
}

/// Checks the lines of a help file on their own.
void check_help_text(const std::string& path, std::string_view text, Faults& faults) {
    LineReader lines(text);
    std::set<std::string> told; ///< entries that lose letters
    std::string entry;
    std::optional<HeaderWalk> header;
    while (const auto line = lines.next()) {
        const Reporter report{faults, path, lines.line_number()};
        if (line->starts_with('+')) {
            entry = *line;
            header.emplace();
            continue;
        }
        if (line->starts_with('-') && line->size() > help_line_length)
            report(help_line_cut, entry,
                   "the text is " + std::to_string(line->size() - 2) + " characters long, " +
                       std::to_string(help_line_length - 2) + " are shown",
                   "break the line earlier");
        if (line->starts_with('-') && loses_its_first_letter(*line) && told.insert(entry).second)
            report(help_letter, entry, "\"" + std::string(*line) + "\" is shown without its first letter",
                   "put a blank after the -: the program drops two characters");
        if (std::string problem = header ? header->take(*line) : ""; !problem.empty())
            report(help_header, entry, std::move(problem),
                   "header lines are p, n for each further page, f, c, w, h, s, x, y, in this order");
    }
}

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

} // namespace

void check_help(Installation& installation, Faults& faults) {
    for (const LanguageFiles& language : installation.by_language) {
        HelpCheck check(installation, language, faults);
        for (const ScreenFiles& screen : language.screens)
            for (int index = 0; index < screen.set.slot_count(); ++index)
                check.look_at(screen, index);
    }
}

} // namespace vcc::kit
