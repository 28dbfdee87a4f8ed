// Limits numbers from data files before they are used as coordinates.
#pragma once

#include <algorithm>
#include <cstdint>

namespace vcc {

/// Far outside every screen, but sums of a few such values never overflow, here or in the graphics library.
inline constexpr int coordinate_limit = 32767;

constexpr int as_coordinate(std::int64_t value) {
    return static_cast<int>(std::clamp<std::int64_t>(value, -coordinate_limit, coordinate_limit));
}

} // namespace vcc
