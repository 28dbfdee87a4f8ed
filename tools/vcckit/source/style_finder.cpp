#include "vcckit/source/style_finder.h"

#include <algorithm>
#include <map>
#include <set>

namespace vcc::kit {

namespace {

Lines shared(const Lines& a, const Lines& b) {
    Lines out;
    std::ranges::copy_if(a, std::back_inserter(out),
                         [&](const Line& line) { return std::ranges::find(b, line) != b.end(); });
    return out;
}

/// Number of lines that a style saves in an entry; 0 if the entry lacks one of the keys, which the style would set.
std::size_t lines_saved(const Entry& entry, const Lines& style) {
    std::size_t saved = 0;
    for (const Line& line : style) {
        const auto own = std::ranges::find(entry.lines, line.key, &Line::key);
        if (own == entry.lines.end())
            return 0;
        saved += *own == line ? 1 : 0;
    }
    const std::size_t cost = entry.styles.empty() ? 1 : 0; // the line "style = ..."
    return saved > cost ? saved - cost : 0;
}

struct Candidate {
    Lines lines;
    std::size_t saved = 0;
};

Candidate best_candidate(const std::vector<Entry>& entries) {
    constexpr std::size_t heading = 2; // a blank line and the name
    Candidate best;
    std::set<std::string> tried;
    for (std::size_t i = 0; i < entries.size(); ++i)
        for (std::size_t j = i + 1; j < entries.size(); ++j) {
            Lines lines = shared(entries[i].lines, entries[j].lines);
            if (lines.size() < 2 || !tried.insert(inline_table(lines)).second)
                continue;
            std::size_t saved = 0;
            for (const Entry& entry : entries)
                saved += lines_saved(entry, lines);
            const std::size_t cost = lines.size() + heading;
            if (saved > cost && saved - cost > best.saved)
                best = {std::move(lines), saved - cost};
        }
    return best;
}

} // namespace

std::vector<Style> find_styles(std::vector<Entry>& entries) {
    std::vector<Style> styles;
    std::map<std::string, int> used;
    for (;;) {
        const Candidate best = best_candidate(entries);
        if (best.saved == 0)
            return styles;
        std::string name;
        for (Entry& entry : entries) {
            if (lines_saved(entry, best.lines) == 0)
                continue;
            if (name.empty()) {
                name = entry.kind;
                if (const int count = ++used[name]; count > 1)
                    name += "_" + std::to_string(count);
            }
            entry.styles.push_back("\"" + name + "\"");
            std::erase_if(entry.lines,
                          [&](const Line& line) { return std::ranges::find(best.lines, line) != best.lines.end(); });
        }
        styles.push_back({name, best.lines});
    }
}

} // namespace vcc::kit
