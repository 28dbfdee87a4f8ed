// Texts: UTF-8 in sources, Windows Latin-1 in what the program reads.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vcc::kit {

struct Utf8Character {
    char32_t code = 0;
    std::size_t size = 0; ///< bytes; 0 if the text does not begin with a character
};

/// The first character of a UTF-8 text; no overlong forms, no surrogates, nothing above U+10FFFF. Pure.
Utf8Character first_character(std::string_view text);

/// The text in Windows Latin-1; nothing if it is not UTF-8 or has other characters. U+0080 to U+009F mean the bytes of
/// the same number.
std::optional<std::string> to_latin1(std::string_view utf8);

/// A text as a source writes it, in quotes; nothing when it is no UTF-8. Pure.
std::optional<std::string> quoted_text(std::string_view utf8);

/// The same for Windows Latin-1: to_latin1() gives the same bytes again.
std::string quoted_latin1(std::string_view latin1);

bool is_utf8(std::string_view text);

/// The text in UTF-8: names and texts of an installation are Windows Latin-1, those of a source are UTF-8 already.
std::string as_utf8(const std::string& text);

/// "U+00FC"
std::string code_point_name(char32_t code);

} // namespace vcc::kit
