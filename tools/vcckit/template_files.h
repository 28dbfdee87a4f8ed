// The files that a new project begins with: those of template/, built into the tool.
#pragma once

#include <span>
#include <string_view>

namespace vcc::kit {

struct TemplateFile {
    std::string_view path; ///< relative, with slashes
    std::string_view bytes;
};
std::span<const TemplateFile> template_files();

} // namespace vcc::kit
