#include "vcckit/text/nearest.h"

#include "platform/latin1.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace vcc::kit {

using platform::lower_letter;

namespace {

constexpr std::size_t longest = 60; ///< longer words are not compared

/// Number of changes, insertions, deletions and swaps of neighbours that turn one word into the other.
std::size_t distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> before(b.size() + 1), last(b.size() + 1), row(b.size() + 1);
    std::iota(last.begin(), last.end(), std::size_t{0});
    const auto same = [&](std::size_t i, std::size_t j) { return lower_letter(a[i - 1]) == lower_letter(b[j - 1]); };
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (same(i, j) ? 0 : 1)});
            if (i > 1 && j > 1 && same(i, j - 1) && same(i - 1, j))
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
        std::swap(before, last);
        std::swap(last, row);
    }
    return last[b.size()];
}

} // namespace

std::string nearest_word(std::string_view word, std::span<const std::string> words) {
    std::string nearest;
    std::size_t fewest = longest;
    for (const std::string& candidate : words) {
        if (word.empty() || word.size() > longest || candidate.size() > longest)
            continue;
        const std::size_t changes = distance(word, candidate);
        if (changes < fewest && changes <= std::max<std::size_t>(1, std::max(word.size(), candidate.size()) / 3) &&
            changes < std::min(word.size(), candidate.size())) {
            fewest = changes;
            nearest = candidate;
        }
    }
    return nearest;
}

} // namespace vcc::kit
