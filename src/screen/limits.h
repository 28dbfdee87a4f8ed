// Numbers of data files before they are used as coordinates.
#pragma once

#include <algorithm>

namespace vcc {

/// Far outside every screen, yet sums of a few such values never overflow, here or in the graphics library.
inline constexpr int coordinate_limit = 32767;

constexpr int as_coordinate(int value) {
    return std::clamp(value, -coordinate_limit, coordinate_limit);
}

} // namespace vcc
