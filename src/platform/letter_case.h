// Comparing names without regard to letter case (A to Z only, in every locale).
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
