// The program's texts: conversion from and to the desktop's UTF-8, and comparison without regard to letter case.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace vcc::platform {

struct Utf8Character {
    char32_t code = 0;
    std::size_t size = 0; ///< bytes; 0 if the text does not begin with a character
};

/// The first character of a UTF-8 text; no overlong forms, no surrogates, nothing above U+10FFFF. Pure.
Utf8Character first_character(std::string_view text);

/// Appends a character below U+10000.
void append_utf8(std::string& text, char32_t character);

/// UTF-8 as Latin-1, up to the first zero byte. Characters beyond Latin-1 and broken sequences become "?". Pure.
std::string latin1_from_utf8(std::string_view text);

/// Latin-1 as UTF-8. Pure.
std::string utf8_from_latin1(std::string_view text);

/// Only A to Z have a lower case, in every locale.
constexpr char lower_letter(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr bool same_but_for_case(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lower_letter(x) == lower_letter(y); });
}

} // namespace vcc::platform
