#include "x11/changed_parts.h"

#include <cstring>

namespace vcc::platform {

namespace {

constexpr int tile_width = 32, tile_height = 16;
constexpr std::size_t longest_list = 16;

} // namespace

void ShownPicture::reset(Size size, int bytes_per_pixel) {
    size_ = size;
    bytes_ = bytes_per_pixel;
    known_ = false;
    pixels_.resize(index(size.width) * index(size.height) * index(bytes_per_pixel));
}

bool ShownPicture::take_tile(PixelRows picture, const Area& tile) {
    const std::size_t count = index(tile.x2 - tile.x1) * index(bytes_);
    const std::size_t pitch = index(size_.width) * index(bytes_);
    bool changed = false;
    for (int y = tile.y1; y < tile.y2; ++y) {
        const std::uint8_t* const from = picture.first + y * picture.pitch + index(tile.x1 * bytes_);
        std::uint8_t* const remembered = pixels_.data() + index(y) * pitch + index(tile.x1 * bytes_);
        changed = changed || std::memcmp(from, remembered, count) != 0;
        if (changed)
            std::memcpy(remembered, from, count);
    }
    return changed;
}

std::vector<Area> ShownPicture::take_changes(PixelRows picture, Area area) {
    const Area all{0, 0, size_.width, size_.height};
    area = shared(area, all);
    std::vector<Area> parts;
    const auto tile_end = [](int at, int extent) { return (at / extent + 1) * extent; };
    for (int y = area.y1; y < area.y2; y = tile_end(y, tile_height))
        for (int x = area.x1; x < area.x2; x = tile_end(x, tile_width)) {
            const Area tile = shared(area, {x, y, tile_end(x, tile_width), tile_end(y, tile_height)});
            if (take_tile(picture, tile))
                add_area(parts, tile);
        }
    if (!known_) // the remembered picture was never shown
        parts = {area};
    known_ = known_ || area == all;
    return parts;
}

void add_area(std::vector<Area>& areas, Area area) {
    if (area.empty())
        return;
    for (bool grown = true; grown;) {
        grown = false;
        for (auto other = areas.begin(); other != areas.end(); ++other) {
            const Area both = joined(*other, area);
            if (both.pixels() * 4 > (other->pixels() + area.pixels()) * 5 && areas.size() < longest_list)
                continue;
            area = both;
            areas.erase(other);
            grown = true;
            break;
        }
    }
    areas.push_back(area);
}

} // namespace vcc::platform
