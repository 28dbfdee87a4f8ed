#include "core/geometry.h"

#include <allegro.h>

namespace vcc {

bool mouse_in_rect(int x1, int y1, int x2, int y2) {
    return Rect{x1, y1, x2, y2}.contains(mouse_x, mouse_y);
}

} // namespace vcc
