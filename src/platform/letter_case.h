// Names that count as the same whatever the case of their letters (A to Z only, so that no locale matters).
#pragma once

#include <algorithm>
#include <string_view>

namespace vcc::platform {

constexpr char lower_letter(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr bool same_but_for_case(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lower_letter(x) == lower_letter(y); });
}

} // namespace vcc::platform
