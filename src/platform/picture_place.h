// Places a picture of a fixed size in a window of any size, and converts between their pixels. Values in, values out.
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

constexpr Area shared(const Area& a, const Area& b) {
    return {std::max(a.x1, b.x1), std::max(a.y1, b.y1), std::min(a.x2, b.x2), std::min(a.y2, b.y2)};
}
constexpr Area joined(const Area& a, const Area& b) {
    return {std::min(a.x1, b.x1), std::min(a.y1, b.y1), std::max(a.x2, b.x2), std::max(a.y2, b.y2)};
}

/// A window as it stands on the desktop between two runs of the program.
struct WindowPlace {
    Area area; ///< without a frame; empty if it is not known
    bool maximised = false;
};

enum class Fit {
    aspect,     ///< as large as the window allows
    whole_steps ///< the largest whole multiple; as above if the window is smaller than the picture
};

struct PicturePlace {
    int x = 0, y = 0; ///< of the picture's corner in the window
    Size size;

    constexpr bool operator==(const PicturePlace&) const = default;
};

/// The picture's place, centred in the window with its aspect ratio kept. Sizes are at least 1.
PicturePlace place_picture(Size window, Size picture, Fit fit);

/// Size of a new window as a multiple of the picture: the largest whole number that fits into four fifths of the room,
/// at least 1.
int start_step(Size room, Size picture);

/// The place for a new window of this size: the wanted one, but no larger than the room; in its middle if less than
/// half of it would be on the desktop.
Area fitted_place(const Area& wanted, const Area& room, const Area& desktop);

/// The picture's pixel under the middle of a shown pixel, `at` pixels from the shown edge; clamped to the picture.
constexpr int picture_pixel(int at, int shown, int picture) {
    return std::clamp(static_cast<int>((2LL * at + 1) * picture / (2LL * shown)), 0, picture - 1);
}

/// The shown pixel in the middle of a picture's pixel; the inverse of picture_pixel() unless the picture is reduced.
constexpr int shown_pixel(int at, int shown, int picture) {
    return static_cast<int>((2LL * at + 1) * shown / (2LL * picture));
}

/// The shown pixels that depend on an area of the picture.
Area shown_area(const Area& area, Size shown, Size picture);

} // namespace vcc::platform
