// Guesses the word that somebody meant.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace vcc::kit {

/// The word with the fewest letters to change, add, remove or swap, the first of several; empty if these are more than
/// a third of the longer word's letters. Ignores letter case. Pure.
std::string nearest_word(std::string_view word, std::span<const std::string> words);

} // namespace vcc::kit
