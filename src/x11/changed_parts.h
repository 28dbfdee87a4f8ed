// Finds the parts of a picture that differ from what was shown last.
#pragma once

#include "x11/picture_place.h"
#include "x11/scaler.h"

#include <cstdint>
#include <vector>

namespace vcc::platform {

/// Remembers a picture as it was last shown.
class ShownPicture {
public:
    /// Forgets the picture: all of it counts as changed until it has been taken over.
    void reset(Size size, int bytes_per_pixel);

    /// The parts of an area that differ from the remembered picture, which is then updated: the tiles with a change,
    /// cut to the area and joined as add_area() does.
    std::vector<Area> take_changes(PixelRows picture, Area area);

private:
    bool take_tile(PixelRows picture, const Area& tile);

    Size size_;
    int bytes_ = 0;
    bool known_ = false;
    std::vector<std::uint8_t> pixels_;
};

/// Adds an area to a short list; joins areas that cost hardly more together.
void add_area(std::vector<Area>& areas, Area area);

} // namespace vcc::platform
