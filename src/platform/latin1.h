// The desktop's UTF-8 and this program's texts.
#pragma once

#include <string>
#include <string_view>

namespace vcc::platform {

/// UTF-8 as Latin-1, up to the first zero byte. Characters beyond Latin-1 and broken sequences become "?". Pure.
std::string latin1_from_utf8(std::string_view text);

/// Latin-1 as UTF-8. Pure.
std::string utf8_from_latin1(std::string_view text);

} // namespace vcc::platform
