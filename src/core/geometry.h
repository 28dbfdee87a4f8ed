#pragma once

#include <allegro.h>

#include <algorithm>
#include <cstdint>

namespace vcc {

/// Numbers from data files are cut to this before they are used as coordinates. Far outside every screen, but sums of a
/// few never overflow, here or in the graphics library.
inline constexpr int coordinate_limit = 32767;

constexpr int as_coordinate(std::int64_t value) {
    return static_cast<int>(std::clamp<std::int64_t>(value, -coordinate_limit, coordinate_limit));
}

/// Pixels.
struct Point {
    int x = 0, y = 0;
};

/// Corners in pixels, edges included.
struct Rect {
    int x1 = 0, y1 = 0, x2 = 0, y2 = 0;

    constexpr bool contains(int x, int y) const { return x1 <= x && x <= x2 && y1 <= y && y <= y2; }
};

/// Whether the mouse pointer is inside, edges included. For places other than slots; unused today.
inline bool mouse_in_rect(int x1, int y1, int x2, int y2) {
    return Rect{x1, y1, x2, y2}.contains(mouse_x, mouse_y);
}

/// Centres an inner area in an outer one. Sets x if the width fits, and then y if the height fits as well; otherwise
/// leaves them unchanged.
constexpr void centre_in(int& x, int& y, int outer_width, int outer_height, int inner_width, int inner_height) {
    if (inner_width > outer_width)
        return;
    x = (outer_width - inner_width) / 2;
    if (inner_height <= outer_height)
        y = (outer_height - inner_height) / 2;
}

} // namespace vcc
