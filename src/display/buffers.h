// The table of graphic buffers: off-screen bitmaps addressed by number.
#pragma once

#include "core/handles.h"

#include <array>

namespace vcc {

inline constexpr int graphic_buffer_count = 25;
inline constexpr int screen_buffer = 0;       ///< every screen is drawn here and copied whole to the display
inline constexpr int backdrop_buffer = 3;     ///< background picture of the screens
inline constexpr int window_copy_buffer = 21; ///< background copy for windows 22 to 25
inline constexpr int help_save_buffer = 22;   ///< what lies under a help page
inline constexpr int info_copy_buffer = 23;   ///< background copy for the explanation box
inline constexpr int text_copy_buffer = 24;   ///< clean background under smoothed text

extern std::array<BitmapPtr, graphic_buffer_count> graphic_buffers;
extern std::array<PALETTE, graphic_buffer_count> buffer_palettes;

/// The bitmap of a buffer, or null when the number is outside 0 to 24 or the buffer is empty.
BITMAP* graphic_buffer(int number);

/// Copies buffer 0 to the screen and shows the pointer again; nothing is copied while the buffer is empty.
void show_buffer_zero();

/// Destroys every bitmap of the table.
void release_graphic_buffers();

} // namespace vcc
