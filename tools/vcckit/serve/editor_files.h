// The page of the screen editor: the files of editor/, built into the tool.
#pragma once

#include "vcckit/files/embedded_file.h"

#include <span>

namespace vcc::kit {

std::span<const EmbeddedFile> editor_files();

} // namespace vcc::kit
