// Names that may stand for numbers in a screen source.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vcc::kit {

/// What a number of a slot record means, and so which names may stand for it.
enum class Meaning { number, colour, font, action, sound, buffer, input, focus };

/// The word for a meaning in messages and in the `names` table of a source.
std::string_view meaning_word(Meaning meaning);
std::optional<Meaning> meaning_of_word(std::string_view word);

/// The number that a built-in name stands for.
std::optional<std::int32_t> number_of_name(Meaning meaning, std::string_view name);

/// The built-in name of a number, if it has one.
std::optional<std::string> name_of_number(Meaning meaning, std::int32_t number);

/// One row of the table, for documents and help.
struct NameRow {
    Meaning meaning;
    std::string_view name; ///< of a single number, or of the first of `count`, which are called name_0, name_1 ...
    std::int32_t first;
    std::int32_t count;
};

} // namespace vcc::kit
