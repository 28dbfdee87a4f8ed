// Texts: UTF-8 in what people write, Windows Latin-1 in what the program reads.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vcc::kit {

/// The text in Windows Latin-1; nothing when it is no UTF-8 or has a character without a place there. U+0080 to U+009F
/// stand for the bytes of the same number.
std::optional<std::string> to_latin1(std::string_view utf8);

/// The text as the inside of a quoted TOML string; to_latin1() of what that string holds gives the same bytes.
std::string to_toml_text(std::string_view latin1);

bool is_utf8(std::string_view text);

/// "U+00FC"
std::string code_point_name(char32_t code);

} // namespace vcc::kit
