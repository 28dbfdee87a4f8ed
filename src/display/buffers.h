// The table of graphic buffers: off-screen bitmaps addressed by number.
#pragma once

#include "core/handles.h"
#include "core/installation.h"

#include <array>

namespace vcc {

inline constexpr int graphic_buffer_count = 25;

extern std::array<BitmapPtr, graphic_buffer_count> graphic_buffers;
extern std::array<PALETTE, graphic_buffer_count> buffer_palettes;

/// The bitmap of a buffer, or null when the number is outside 0 to 24 or the buffer is empty.
BITMAP* graphic_buffer(int number);

/// Copies buffer 0 to the screen and shows the pointer again; nothing is copied while the buffer is empty.
void show_buffer_zero();

/// Destroys every bitmap of the table.
void release_graphic_buffers();

} // namespace vcc
