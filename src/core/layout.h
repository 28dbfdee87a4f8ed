// The size of the logical screen, which every grid and every picture refers to.
#pragma once

#include "core/installation.h"

namespace vcc {

inline int layout_width = picture_width;   ///< pixels
inline int layout_height = picture_height; ///< pixels

} // namespace vcc
