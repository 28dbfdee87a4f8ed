// Names for numbers in screen sources.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vcc::kit {

/// What a number of a slot record means, which decides the names for it.
enum class Meaning { number, colour, font, action, sound, buffer, input, focus };

inline constexpr std::array all_meanings{Meaning::number, Meaning::colour, Meaning::font,  Meaning::action,
                                         Meaning::sound,  Meaning::buffer, Meaning::input, Meaning::focus};

/// The word for a meaning in messages and in the `names` table of a source.
std::string_view meaning_word(Meaning meaning);
std::optional<Meaning> meaning_of_word(std::string_view word);

/// The number of a built-in name.
std::optional<std::int32_t> number_of_name(Meaning meaning, std::string_view name);

/// The built-in name of a number, if it has one.
std::optional<std::string> name_of_number(Meaning meaning, std::int32_t number);

/// Every name of a meaning.
std::vector<std::string> names_of(Meaning meaning);

/// The valid values of a meaning, in words: "fonts are 0 to 10, or ..."
std::string permitted_values(Meaning meaning);

} // namespace vcc::kit
