// Guesses the word that somebody meant.
#pragma once

#include <functional>
#include <ranges>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vcc::kit {

/// The word with the fewest letters to change, add, remove or swap, the first of several; empty if these are more than
/// a third of the longer word's letters. Ignores letter case. Pure.
std::string nearest_word(std::string_view word, std::span<const std::string> words);

/// The same among the words that a projection takes from the elements of a range.
template <class Range, class Projection>
std::string nearest_word(std::string_view word, const Range& range, Projection projection) {
    std::vector<std::string> words;
    words.reserve(std::ranges::size(range));
    for (const auto& each : range)
        words.emplace_back(std::invoke(projection, each));
    return nearest_word(word, words);
}

} // namespace vcc::kit
