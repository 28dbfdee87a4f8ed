#include "interaction/help_file.h"

#include "core/installation.h"
#include "core/lines.h"
#include "core/text.h"
#include "text/fonts.h"

#include <algorithm>

namespace vcc {

namespace {

constexpr std::size_t line_length = help_line_length;
constexpr int page_limit = 9;
constexpr int look_headers = 7; ///< font, text colour, window colour, shadow, sound, column, row
constexpr std::size_t text_start = 2;

class EntryReader {
public:
    explicit EntryReader(std::string_view text) : lines_(text) {}

    /// Moves on to the line after the next "+number".
    bool find(int number) {
        while (const auto line = lines_.next())
            if (line->starts_with('+') && to_number(*line) == number)
                return true;
        return false;
    }

    /// The number of the next header line; `missing` if there is no such line or it is too short for a number.
    int header(int missing) { return number_in(lines_.next(), missing); }

    std::vector<int> pages(int number) {
        const int count = number_in(lines_.next(line_length - 1), 1);
        std::vector<int> pages{number};
        for (int page = 2; page <= count; ++page) {
            const auto line = lines_.next(line_length - 1);
            if (!line)
                break;
            if (page <= page_limit)
                pages.push_back(number_in(line, 0));
        }
        return pages;
    }

    /// Takes text lines; true if a line of another kind ends them.
    bool text_lines(std::vector<std::string>& texts) {
        while (const auto line = lines_.next()) {
            if (!line->starts_with('-'))
                return true;
            keep(texts, *line);
        }
        return false;
    }

    /// Skips header lines, whose label may also be "+", and adds the first text line; false if the next entry comes
    /// first.
    bool first_text_line(std::vector<std::string>& texts) {
        for (long long header = 0, headers = 0; const auto line = lines_.next(); ++header) {
            if (line->starts_with('-')) {
                keep(texts, *line);
                return true;
            }
            if (header == 0)
                headers = look_headers + std::max(line->empty() ? 0LL : to_number(line->substr(1)), 1LL);
            if (header >= headers && line->starts_with('+'))
                return false;
        }
        return false;
    }

private:
    static int number_in(std::optional<std::string_view> line, int missing) {
        return line && line->size() > 1 ? to_number(line->substr(1, line_length - 1)) : missing;
    }

    void keep(std::vector<std::string>& texts, std::string_view line) const {
        if (texts.size() < grid_row_limit)
            texts.emplace_back(line.substr(std::min(text_start, line.size())).substr(0, line_length - text_start));
    }

    LineReader lines_;
};

} // namespace

std::optional<HelpEntry> read_help_entry(std::string_view text, int number) {
    EntryReader reader(text);
    if (!reader.find(number))
        return std::nullopt;
    HelpEntry entry;
    entry.pages = reader.pages(number);
    for (int* value : {&entry.font, &entry.text_colour, &entry.window_colour, &entry.shadow_colour, &entry.sound,
                       &entry.column, &entry.row})
        *value = reader.header(*value);
    entry.complete = reader.text_lines(entry.lines);
    return entry;
}

std::optional<std::vector<std::string>> read_help_page(std::string_view text, int number) {
    EntryReader reader(text);
    std::vector<std::string> texts;
    if (!reader.find(number) || !reader.first_text_line(texts))
        return std::nullopt;
    reader.text_lines(texts);
    return texts;
}

} // namespace vcc
