// The program's texts: conversion from and to the desktop's UTF-8, and comparison without regard to letter case.
#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace vcc::platform {

/// The characters of the bytes 0x80 to 0x9F in Windows Latin-1; in Latin-1 all of them are control characters.
inline constexpr std::array<char16_t, 32> windows_characters{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

/// UTF-8 as Latin-1, up to the first zero byte. Characters beyond Latin-1 and broken sequences become "?". Pure.
std::string latin1_from_utf8(std::string_view text);

std::string utf8_from_latin1(std::string_view text);

/// Only A to Z have a lower case, in every locale.
constexpr char lower_letter(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr bool same_but_for_case(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, {}, lower_letter, lower_letter);
}

} // namespace vcc::platform
