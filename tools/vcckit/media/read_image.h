// Pictures of the usual formats in memory.
#pragma once

#include "vcckit/media/convert.h"

#include <optional>

namespace vcc::kit {

/// Reads a PNG, JPEG, BMP, PCX or other picture, or the first frame of a film; nothing with the reason in `fault`.
std::optional<Image> read_image(const Media& media, std::string& fault);

} // namespace vcc::kit
