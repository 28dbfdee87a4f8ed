// Files of an installation as readable text.
#pragma once

#include <string>
#include <string_view>

namespace vcc::kit {

/// The text, in UTF-8, or nothing with the reason in `fault`. `path` names the file; its ending tells the format, as
/// far as the bytes do not.
std::string shown_file(const std::string& path, std::string_view bytes, std::string& fault);

} // namespace vcc::kit
