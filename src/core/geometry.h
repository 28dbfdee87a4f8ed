// Rectangles on the screen.
#pragma once

namespace vcc {

/// Corners in pixels, all of them inside.
struct Rect {
    int x1 = 0, y1 = 0, x2 = 0, y2 = 0;

    constexpr bool contains(int x, int y) const { return x1 <= x && x <= x2 && y1 <= y && y <= y2; }
};

/// Whether the mouse pointer is inside (both bounds inclusive). Kept for places that are no slot; there are none now.
bool mouse_in_rect(int x1, int y1, int x2, int y2);

/// Centres an inner area in an outer one. x is computed when the width fits, y only when then the height fits as well;
/// an output that is not computed keeps its value.
constexpr void centre_in(int& x, int& y, int outer_width, int outer_height, int inner_width, int inner_height) {
    if (inner_width > outer_width)
        return;
    x = (outer_width - inner_width) / 2;
    if (inner_height <= outer_height)
        y = (outer_height - inner_height) / 2;
}

} // namespace vcc
