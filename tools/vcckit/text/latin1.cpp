#include "vcckit/text/latin1.h"

#include "core/log.h"
#include "platform/latin1.h"

#include <algorithm>
#include <cstdint>

namespace vcc::kit {

namespace {

struct LeadRow {
    std::uint8_t mask, mark; ///< the lead byte of this form, masked, is the mark
    std::size_t size;
    char32_t least; ///< smaller codes have a shorter form
};
constexpr LeadRow leads[] = {
    {0x80, 0x00, 1, 0}, {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}};
constexpr char32_t largest = 0x10FFFF, first_surrogate = 0xD800, last_surrogate = 0xDFFF;

std::optional<unsigned char> byte_of(char32_t character) {
    if (character < 0x100)
        return static_cast<unsigned char>(character);
    const auto* const found = std::ranges::find(platform::windows_characters, character);
    if (found == platform::windows_characters.end())
        return std::nullopt;
    return static_cast<unsigned char>(0x80 + (found - platform::windows_characters.begin()));
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

std::optional<std::string> to_latin1(std::string_view utf8) {
    std::string out;
    while (!utf8.empty()) {
        const Utf8Character next = first_character(utf8);
        const auto byte = next.size == 0 ? std::nullopt : byte_of(next.code);
        if (!byte)
            return std::nullopt;
        out += static_cast<char>(*byte);
        utf8.remove_prefix(next.size);
    }
    return out;
}

std::optional<std::string> quoted_text(std::string_view utf8) {
    std::string out = "\"";
    while (!utf8.empty()) {
        const Utf8Character next = first_character(utf8);
        if (next.size == 0)
            return std::nullopt;
        if (next.code < 0x20 || (next.code >= 0x7F && next.code < 0xA0))
            out += "\\u" + code_point_name(next.code).substr(2);
        else
            out.append(next.code == '"' || next.code == '\\' ? "\\" : "").append(utf8.substr(0, next.size));
        utf8.remove_prefix(next.size);
    }
    return out += '"';
}

std::string quoted_latin1(std::string_view latin1) {
    std::string utf8;
    for (const char c : latin1) {
        const auto byte = static_cast<unsigned char>(c);
        append_utf8(utf8, byte >= 0x80 && byte < 0xA0 ? platform::windows_characters[byte - 0x80u] : byte);
    }
    return *quoted_text(utf8);
}

bool is_utf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t size = first_character(text).size;
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
    return format_text("U+%04X", static_cast<unsigned>(code));
}

} // namespace vcc::kit
