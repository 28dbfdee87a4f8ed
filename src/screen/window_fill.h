// The inside of a text window: fill, shadow and grid.
#pragma once

#include "core/geometry.h"
#include "screen/text_window.h"

#include <allegro.h>

namespace vcc {

/// Fills an area in the window's style: solid (nothing for a colour below 0), dotted (without the right and bottom
/// edge), or translucent with the window's shadow.
void fill_window(BITMAP* target, const TextWindow& window, const Rect& area);

/// Draws the window's grid lines over an area; nothing for a solid window, without a spacing, or for an empty area.
void draw_window_grid(BITMAP* target, const TextWindow& window, const Rect& area);

} // namespace vcc
