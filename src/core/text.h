// Helpers for texts (bytes in Windows Latin-1) and for the fixed character arrays of file records.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace vcc {

inline constexpr std::string_view white_space = " \t\n\v\f\r"; ///< as the C library's isspace()

/// Pads the text with `fill` to `length` - 1 characters (the length counts a terminating zero); never shortens it.
void pad_text(std::string& text, int length, char fill);

/// Removes trailing blanks (character 32 only); returns the remaining length.
int trim_right(std::string& text);

std::string trim_left(std::string_view text);

bool is_blank(std::string_view text);

/// The text up to, but not including, the first `stop`; the whole text without one.
std::string_view cut_at(std::string_view text, char stop);

/// `name` with everything from its last "." on replaced by `extension` (given with its dot). A "." as the first
/// character does not count; a name without any other gives the extension alone.
std::string replace_extension(std::string_view name, std::string_view extension);

/// The decimal number at the beginning of a text, as atoi reads it: white space, a sign, digits; 0 if there are none.
/// Clamped to the range of int.
int to_number(std::string_view text);

/// The text in a character array of a file record, up to its first zero or its end.
template <std::size_t N>
std::string_view text_of(const char (&field)[N]) {
    return {field, static_cast<std::size_t>(std::find(field, field + N, '\0') - field)};
}

/// Stores a text in a character array, cut to N - 1 characters and filled up with zeros.
template <std::size_t N>
void store_text(char (&field)[N], std::string_view text) {
    const std::size_t length = std::min(text.size(), N - 1);
    std::copy_n(text.begin(), length, field);
    std::fill(field + length, field + N, '\0');
}

} // namespace vcc
