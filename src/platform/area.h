#pragma once

#include <algorithm>

namespace vcc::platform {

struct Size {
    int width = 0, height = 0; ///< pixels

    constexpr bool operator==(const Size&) const = default;
};

/// Pixels from x1 to x2 and y1 to y2, ends excluded.
struct Area {
    int x1 = 0, y1 = 0, x2 = 0, y2 = 0;

    constexpr Size size() const { return {x2 - x1, y2 - y1}; }
    constexpr bool empty() const { return x1 >= x2 || y1 >= y2; }
    constexpr long pixels() const { return static_cast<long>(x2 - x1) * (y2 - y1); }
    constexpr bool operator==(const Area&) const = default;
};

/// An area of a size in the middle of another one.
constexpr Area centred(Size size, const Area& outer) {
    const int x = outer.x1 + (outer.size().width - size.width) / 2;
    const int y = outer.y1 + (outer.size().height - size.height) / 2;
    return {x, y, x + size.width, y + size.height};
}
constexpr Area shared(const Area& a, const Area& b) {
    return {std::max(a.x1, b.x1), std::max(a.y1, b.y1), std::min(a.x2, b.x2), std::min(a.y2, b.y2)};
}
constexpr Area joined(const Area& a, const Area& b) {
    return {std::min(a.x1, b.x1), std::min(a.y1, b.y1), std::max(a.x2, b.x2), std::max(a.y2, b.y2)};
}

} // namespace vcc::platform
