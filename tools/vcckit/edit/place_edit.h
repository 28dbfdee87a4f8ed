// Moving and resizing what records draw.
#pragma once

#include "vcckit/edit/operation.h"

#include "core/result.h"

#include <string>

namespace vcc::kit::edit {

/// The text after Do::move or Do::resize. Everything addressed moves once, also where several addresses are of one
/// group; languages keep their distance.
Result<std::string> move_or_resize(std::string text, const Operation& operation);

} // namespace vcc::kit::edit
