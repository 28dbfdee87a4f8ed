#include "platform/latin1.h"

namespace vcc::platform {

namespace {

bool continues(std::string_view text) {
    return !text.empty() && (static_cast<unsigned char>(text.front()) & 0xC0U) == 0x80U;
}

} // namespace

std::string latin1_from_utf8(std::string_view text) {
    text = text.substr(0, text.find('\0'));
    std::string latin;
    while (!text.empty()) {
        const unsigned lead = static_cast<unsigned char>(text.front());
        text.remove_prefix(1);
        if (lead < 0x80) {
            latin += static_cast<char>(lead);
            continue;
        }
        const bool is_latin = (lead == 0xC2 || lead == 0xC3) && continues(text);
        latin += is_latin ? static_cast<char>(lead << 6 | (text.front() & 0x3F)) : '?';
        if (is_latin)
            text.remove_prefix(1);
        else
            while (continues(text))
                text.remove_prefix(1);
    }
    return latin;
}

std::string utf8_from_latin1(std::string_view text) {
    std::string utf8;
    for (const char c : text) {
        const unsigned code = static_cast<unsigned char>(c);
        if (code >= 0x80)
            utf8 += static_cast<char>(0xC0 | code >> 6);
        utf8 += code < 0x80 ? c : static_cast<char>(0x80 | (code & 0x3F));
    }
    return utf8;
}

} // namespace vcc::platform
