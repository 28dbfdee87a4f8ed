// A file of the source tree that is built into the tool.
#pragma once

#include <string_view>

namespace vcc::kit {

struct EmbeddedFile {
    std::string_view path; ///< relative to its folder, with slashes
    std::string_view bytes;
};

} // namespace vcc::kit
