// The files of a new project: those of template/, built into the tool.
#pragma once

#include "vcckit/files/embedded_file.h"

#include <span>

namespace vcc::kit {

std::span<const EmbeddedFile> template_files();

} // namespace vcc::kit
