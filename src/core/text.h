// Small operations on texts (bytes in Windows Latin-1) and on fixed character arrays of file records.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace vcc {

/// Appends `fill` until the text is `length` - 1 characters long (the length counts a terminating zero); never
/// shortens.
void pad_text(std::string& text, int length, char fill);

/// Removes blanks (character 32 only) from the end; returns the remaining length.
int trim_right(std::string& text);

/// The text without blanks at its beginning.
std::string trim_left(std::string_view text);

/// True when the text is empty or consists of blanks only.
bool is_blank(std::string_view text);

/// The text up to (not including) the first `stop`; the whole text without one.
std::string_view cut_at(std::string_view text, char stop);

/// `name` with everything from its last "." on replaced by `extension` (given with its dot). The first character is not
/// looked at; a name without such a "." gives the extension alone.
std::string replace_extension(std::string_view name, std::string_view extension);

/// Standard decimal conversion of the beginning of a text, as atoi does it: leading white space, a sign, digits; 0 when
/// there are none. Values outside the range of int are clamped to it.
int to_number(std::string_view text);

/// The text in a zero-terminated character array of a file record; safe when the terminator is missing.
template <std::size_t N>
std::string_view text_of(const char (&field)[N]) {
    return {field, static_cast<std::size_t>(std::find(field, field + N, '\0') - field)};
}

/// Stores a text in a character array, cut to N - 1 characters and zero-filled.
template <std::size_t N>
void store_text(char (&field)[N], std::string_view text) {
    const std::size_t length = std::min(text.size(), N - 1);
    std::copy_n(text.begin(), length, field);
    std::fill(field + length, field + N, '\0');
}

} // namespace vcc
