#include "vcckit/text/latin1.h"

#include "platform/latin1.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace vcc::kit {

namespace {

/// The characters of the bytes 0x80 to 0x9F; 0 for the five that are undefined.
constexpr std::array<char32_t, 32> upper_controls{0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                  0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                                  0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                  0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

std::optional<unsigned char> byte_of(char32_t character) {
    if (character < 0x100)
        return static_cast<unsigned char>(character);
    const auto* const found = std::find(upper_controls.begin(), upper_controls.end(), character);
    if (found == upper_controls.end())
        return std::nullopt;
    return static_cast<unsigned char>(0x80 + (found - upper_controls.begin()));
}

} // namespace

std::optional<std::string> to_latin1(std::string_view utf8) {
    std::string out;
    while (!utf8.empty()) {
        const platform::Utf8Character next = platform::first_character(utf8);
        const auto byte = next.size == 0 ? std::nullopt : byte_of(next.code);
        if (!byte)
            return std::nullopt;
        out += static_cast<char>(*byte);
        utf8.remove_prefix(next.size);
    }
    return out;
}

std::optional<std::string> quoted_text(std::string_view utf8) {
    if (!is_utf8(utf8))
        return std::nullopt;
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string out = "\"";
    while (!utf8.empty()) {
        const platform::Utf8Character next = platform::first_character(utf8);
        if (next.code == '"' || next.code == '\\') {
            out += '\\';
            out += static_cast<char>(next.code);
        } else if (next.code < 0x20 || (next.code >= 0x7F && next.code < 0xA0)) {
            out += "\\u00";
            out += digits[next.code >> 4U & 15U];
            out += digits[next.code & 15U];
        } else {
            out += utf8.substr(0, next.size);
        }
        utf8.remove_prefix(next.size);
    }
    return out += '"';
}

std::string quoted_latin1(std::string_view latin1) {
    std::string utf8;
    for (const char c : latin1) {
        const auto byte = static_cast<unsigned char>(c);
        const char32_t own = byte >= 0x80 && byte < 0xA0 ? upper_controls[byte - 0x80u] : 0;
        platform::append_utf8(utf8, own != 0 ? own : byte);
    }
    return *quoted_text(utf8);
}

bool is_utf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t size = platform::first_character(text).size;
        if (size == 0)
            return false;
        text.remove_prefix(size);
    }
    return true;
}

std::string as_utf8(const std::string& text) {
    return is_utf8(text) ? text : platform::utf8_from_latin1(text);
}

std::string code_point_name(char32_t code) {
    char name[16] = {};
    std::snprintf(name, sizeof name, "U+%04X", static_cast<unsigned>(code));
    return name;
}

} // namespace vcc::kit
