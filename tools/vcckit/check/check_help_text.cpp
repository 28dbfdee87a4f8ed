// Checks a help file line by line for what the program cuts or misreads.
#include "vcckit/check/check.h"

#include "core/installation.h"
#include "core/lines.h"
#include "core/text.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
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

/// Follows the header lines of an entry, whose order alone matters to the program.
class HeaderWalk {
public:
    /// What is wrong with a line; empty if nothing is, or if it does not belong to a header.
    std::string take(std::string_view line) {
        if (done_ || line.empty() || line[0] == '-' || line[0] == '#') {
            done_ = true;
            return {};
        }
        const HeaderRow& row = further_ > 0 ? further_page : headers[row_];
        const bool fits = row.labels.find(static_cast<char>(std::tolower(static_cast<unsigned char>(line[0])))) !=
                          std::string_view::npos;
        if (!fits) {
            done_ = true; // the lines after it are out of order, too
            return "\"" + std::string(line) + "\" stands where the " + std::string(row.what) + " is read";
        }
        if (further_ > 0)
            --further_;
        else if (row_++ == 0)
            further_ = std::clamp(to_number(line.substr(1)) - 1, 0, 8);
        done_ = further_ == 0 && row_ == std::size(headers);
        return {};
    }

private:
    std::size_t row_ = 0;
    int further_ = 0; ///< pages whose numbers are still missing
    bool done_ = false;
};

/// Whether a text line begins without the character that the program drops.
bool loses_its_first_letter(std::string_view line) {
    return line.size() > 1 && (std::isalnum(static_cast<unsigned char>(line[1])) != 0 || line[1] < 0);
}

} // namespace

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

} // namespace vcc::kit
