#include "platform/latin1.h"

#include <cstdint>

namespace vcc::platform {

namespace {

bool continues(std::string_view text) {
    return !text.empty() && (static_cast<unsigned char>(text.front()) & 0xC0U) == 0x80U;
}

struct LeadRow {
    std::uint8_t mask, mark; ///< the lead byte of this form, masked, is the mark
    std::size_t size;
    char32_t least; ///< smaller codes have a shorter form
};
constexpr LeadRow leads[] = {
    {0x80, 0x00, 1, 0}, {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}};
constexpr char32_t largest = 0x10FFFF, first_surrogate = 0xD800, last_surrogate = 0xDFFF;

} // namespace

Utf8Character first_character(std::string_view text) {
    if (text.empty())
        return {};
    const auto lead = static_cast<std::uint8_t>(text[0]);
    for (const LeadRow& row : leads) {
        if ((lead & row.mask) != row.mark)
            continue;
        if (text.size() < row.size)
            return {};
        char32_t code = lead & static_cast<std::uint8_t>(~row.mask);
        for (std::size_t i = 1; i < row.size; ++i) {
            const auto byte = static_cast<std::uint8_t>(text[i]);
            if ((byte & 0xC0) != 0x80)
                return {};
            code = code << 6 | (byte & 0x3F);
        }
        const bool surrogate = code >= first_surrogate && code <= last_surrogate;
        return code < row.least || code > largest || surrogate ? Utf8Character{} : Utf8Character{code, row.size};
    }
    return {};
}

void append_utf8(std::string& out, char32_t character) {
    const auto put = [&out](char32_t value) { out += static_cast<char>(static_cast<unsigned char>(value)); };
    if (character < 0x80) {
        put(character);
    } else if (character < 0x800) {
        put(0xC0 | character >> 6);
        put(0x80 | (character & 0x3F));
    } else {
        put(0xE0 | character >> 12);
        put(0x80 | (character >> 6 & 0x3F));
        put(0x80 | (character & 0x3F));
    }
}

std::string latin1_from_utf8(std::string_view text) {
    text = text.substr(0, text.find('\0'));
    std::string latin;
    while (!text.empty()) {
        const Utf8Character next = first_character(text);
        if (next.size != 0 && next.code < 0x100) {
            latin += static_cast<char>(static_cast<unsigned char>(next.code));
            text.remove_prefix(next.size);
            continue;
        }
        latin += '?';
        do
            text.remove_prefix(1);
        while (continues(text));
    }
    return latin;
}

std::string utf8_from_latin1(std::string_view text) {
    std::string utf8;
    for (const char c : text)
        append_utf8(utf8, static_cast<unsigned char>(c));
    return utf8;
}

} // namespace vcc::platform
