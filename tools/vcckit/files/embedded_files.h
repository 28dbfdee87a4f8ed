// Files of the source tree that are built into the tool.
#pragma once

#include <span>
#include <string_view>

namespace vcc::kit {

struct EmbeddedFile {
    std::string_view path; ///< relative to its folder, with slashes
    std::string_view bytes;
};

/// Those of template/, for a new project.
std::span<const EmbeddedFile> template_files();

/// Those of page/, in the program of the editor.
std::span<const EmbeddedFile> editor_files();

} // namespace vcc::kit
