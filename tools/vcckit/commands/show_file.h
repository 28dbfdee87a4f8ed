// Files of an installation as readable text.
#pragma once

#include <string>
#include <string_view>

namespace vcc::kit {

/// The text in UTF-8; nothing with the reason in `fault`. The bytes, or else the extension of `path`, decide the
/// format.
std::string shown_file(const std::string& path, std::string_view bytes, std::string& fault);

} // namespace vcc::kit
