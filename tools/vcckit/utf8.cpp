#include "utf8.h"

#include <cstdint>
#include <cstdio>

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

bool is_utf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t size = first_character(text).size;
        if (size == 0)
            return false;
        text.remove_prefix(size);
    }
    return true;
}

std::string code_point_name(char32_t code) {
    char name[16] = {};
    std::snprintf(name, sizeof name, "U+%04X", static_cast<unsigned>(code));
    return name;
}

} // namespace vcc::kit
