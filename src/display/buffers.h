// The graphic buffers: off-screen bitmaps addressed by number.
#pragma once

#include "core/handles.h"
#include "core/installation.h"

#include <array>

namespace vcc {

inline constexpr int graphic_buffer_count = 25;

inline std::array<BitmapPtr, graphic_buffer_count> graphic_buffers;
inline std::array<PALETTE, graphic_buffer_count> buffer_palettes{};

/// The bitmap of a buffer, or null if the number is outside 0 to 24 or the buffer is empty.
BITMAP* graphic_buffer(int number);

/// Copies a whole picture to the display; does nothing without a picture or a display.
void copy_to_screen(BITMAP* picture);

/// A copy in the colour depth in force; null without memory.
BitmapPtr copy_of(BITMAP* picture);

void release_graphic_buffers();

} // namespace vcc
