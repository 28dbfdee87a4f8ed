// The word that somebody meant.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace vcc::kit {

/// The word with the fewest letters to change, add, leave out or swap, the first of several; empty when even that one
/// is too far away: more than a third of the longer word's letters. Letter case does not count. Pure.
std::string nearest_word(std::string_view word, std::span<const std::string> words);

} // namespace vcc::kit
