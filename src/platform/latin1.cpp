#include "platform/latin1.h"

#include <cstddef>
#include <cstdint>

namespace vcc::platform {

std::string latin1_from_utf8(std::string_view text) {
    const auto continues = [&](std::size_t i) {
        return i < text.size() && (static_cast<unsigned char>(text[i]) & 0xC0U) == 0x80U;
    };
    std::string latin;
    for (std::size_t i = 0; i < text.size() && text[i] != '\0';) {
        const auto lead = static_cast<unsigned char>(text[i++]);
        if (lead < 0x80U) {
            latin += static_cast<char>(lead);
        } else if ((lead == 0xC2U || lead == 0xC3U) && continues(i)) {
            const auto low = static_cast<unsigned char>(text[i++]) & 0x3FU;
            latin += static_cast<char>((lead == 0xC3U ? 0xC0U : 0x80U) | low);
        } else {
            while (continues(i))
                ++i;
            latin += '?';
        }
    }
    return latin;
}

std::string utf8_from_latin1(std::string_view text) {
    std::string utf8;
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (code < 0x80U) {
            utf8 += c;
        } else {
            utf8 += static_cast<char>(0xC0U | (code >> 6U));
            utf8 += static_cast<char>(0x80U | (code & 0x3FU));
        }
    }
    return utf8;
}

} // namespace vcc::platform
