// Help files. An entry consists of a line "+NUMBER", header lines of an arbitrary label character and a number each
// (page count, entries of further pages, font, text colour, window colour, shadow, sound, column, row), and text lines
// that begin with "-" and one more character. Any other line ends it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vcc {

struct HelpEntry {
    std::vector<int> pages; ///< entry numbers, the entry's own first; 1 to 9
    int font = 4, text_colour = 14, window_colour = 0, shadow_colour = 0, sound = 26, column = 100, row = 100;
    std::vector<std::string> lines;
    bool complete = false; ///< false: the text runs to the end of the file
};

/// Reads an entry of a help file in memory; nothing if the file has no such entry. Cuts lines to
/// `help_line_length` characters; keeps at most 9 pages and as many text lines as a grid has rows. Pure.
std::optional<HelpEntry> read_help_entry(std::string_view text, int number);

/// The text lines of a further page, without regard to its header; nothing if the entry is missing or has none. Pure.
std::optional<std::vector<std::string>> read_help_page(std::string_view text, int number);

} // namespace vcc
