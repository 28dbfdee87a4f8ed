#include "x11/picture_place.h"

#include <cmath>

namespace vcc::platform {

namespace {

/// The other side of a picture with this aspect, rounded to the nearest pixel.
constexpr int other_side(int side, int aspect_side, int aspect_other) {
    return std::max(1, static_cast<int>((2LL * side * aspect_other + aspect_side) / (2LL * aspect_side)));
}

} // namespace

Area place_picture(Size window, Size picture, Fit fit) {
    const int step = std::min(window.width / picture.width, window.height / picture.height);
    Size size = window;
    if (fit == Fit::whole_steps && step >= 1)
        size = {picture.width * step, picture.height * step};
    else if (1LL * window.width * picture.height <= 1LL * window.height * picture.width)
        size.height = other_side(window.width, picture.width, picture.height);
    else
        size.width = other_side(window.height, picture.height, picture.width);
    return centred(size, {0, 0, window.width, window.height});
}

Size first_size(Size room, Size picture, double desktop_scale, Fit fit) {
    const double largest = std::min(0.8 * room.width / picture.width, 0.8 * room.height / picture.height);
    double scale = std::max(1.0, std::floor(largest));
    if (fit == Fit::aspect)
        scale = std::max(scale, std::min(largest, desktop_scale));
    return {static_cast<int>(picture.width * scale), static_cast<int>(picture.height * scale)};
}

Area fitted_place(const Area& wanted, const Area& room, const Area& desktop) {
    const Size size{std::min(wanted.size().width, room.size().width),
                    std::min(wanted.size().height, room.size().height)};
    const Area placed{wanted.x1, wanted.y1, wanted.x1 + size.width, wanted.y1 + size.height};
    const Area seen = shared(placed, desktop);
    if (!seen.empty() && 2 * seen.pixels() >= placed.pixels())
        return placed;
    return centred(size, room);
}

Area shown_area(const Area& area, Size shown, Size picture) {
    const auto first = [](int at, int size, int source) { return static_cast<int>(1LL * at * size / source); };
    const auto last = [](int at, int size, int source) {
        return static_cast<int>((1LL * at * size + source - 1) / source);
    };
    return {first(area.x1, shown.width, picture.width), first(area.y1, shown.height, picture.height),
            last(area.x2, shown.width, picture.width), last(area.y2, shown.height, picture.height)};
}

} // namespace vcc::platform
