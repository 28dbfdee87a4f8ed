// UTF-8, one character at a time.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vcc::kit {

struct Utf8Character {
    char32_t code = 0;
    std::size_t size = 0; ///< bytes; 0 when the text does not begin with a character
};

/// The first character of a text; no overlong forms, no surrogates, nothing above U+10FFFF. Pure.
Utf8Character first_character(std::string_view text);

bool is_utf8(std::string_view text);

/// "U+00FC"
std::string code_point_name(char32_t code);

} // namespace vcc::kit
