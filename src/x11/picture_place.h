// Places a picture of a fixed size in a window of any size, and converts between their pixels. Values in, values out.
#pragma once

#include "platform/area.h"

#include <algorithm>

namespace vcc::platform {

/// Where a window stood when the program last ran.
struct WindowPlace {
    Area area; ///< without a frame; empty if it is not known
    bool maximised = false;
};

/// As the setting `display_scale` counts.
enum class Fit {
    none,       ///< the picture keeps its size
    aspect,     ///< as large as the window allows
    whole_steps ///< the largest whole multiple; as above if the window is smaller than the picture
};

/// The picture's place, centred in the window with its aspect ratio kept. Sizes are at least 1.
Area place_picture(Size window, Size picture, Fit fit);

/// Size of a new window: the largest whole multiple of the picture within four fifths of the room or, with Fit::aspect,
/// the desktop's own scale if that is larger; never smaller than the picture.
Size first_size(Size room, Size picture, double desktop_scale, Fit fit);

/// The wanted place of a new window, but no larger than the room; the middle of the room if less than half of it would
/// be on the desktop.
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
