// The files that a new project begins with: those of template/, built into the tool.
#pragma once

#include "embedded_file.h"

#include <span>

namespace vcc::kit {

std::span<const EmbeddedFile> template_files();

} // namespace vcc::kit
