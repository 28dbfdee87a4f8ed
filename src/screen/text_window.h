// Text windows: framed panels described by data, and the file that describes them: per line a key of one or two letters
// and a number, for the window of the latest "+" line.
#pragma once

#include "core/installation.h"

#include <allegro.h>

#include <array>
#include <string>
#include <string_view>

namespace vcc {

inline constexpr int text_window_count = 30;

struct TextWindow {
    std::string title; ///< at most 255 characters
    int title_colour = 0;
    int colour = 0; ///< fill, dots, grid lines and frame; below 0: no fill
    int left = 0, top = 0, right = 0, bottom = 0;
    int style = 0; ///< 0 solid, below 0 dotted, above 0 translucent
    int red = 0, green = 0, blue = 0, alpha = 0;
    int open_sound = 0, close_sound = 0;
    int shadow = 0; ///< pixels
    int grid = 0;   ///< pixels between grid lines, 0 or less: none
    int font = 0;
    int pixel_coords = 0; ///< 0: edges are cells of the font's grid
    int pointer_offset = 0;
    int background_buffer = 0;           ///< graphic buffer that the area is restored from
    BITMAP* background_bitmap = nullptr; ///< borrowed; the options screen restores the background from it
};

inline std::array<TextWindow, text_window_count> text_windows;
inline int current_text_window = 0;   ///< the highlighted window
inline constexpr int dot_spacing = 2; ///< pixels between dots of the dotted style

/// Restores the window's background from its buffer if its style needs that, then draws the window. A number outside
/// the table draws nothing.
void draw_text_window(BITMAP* target, int number);

/// The same with the background from the window's bitmap: restored for pixel windows if `restore` is not 0, for cell
/// windows if it is -1.
void draw_text_window_from_bitmap(BITMAP* target, int number, int restore);

// The two forms of a window (0 to 29) by its kind of coordinates.
void draw_cell_window(BITMAP* target, int number, bool highlighted);
void draw_pixel_window(BITMAP* target, int number, bool highlighted);

/// Applies a text-window file in memory to the table; returns the number of "-" lines. Calls `each_line` before each.
int read_text_windows(std::string_view text, std::array<TextWindow, text_window_count>& windows,
                      void (*each_line)() = nullptr);

/// Loads a file into the table; 0 if it cannot be opened or has no "-" line.
int load_text_windows(const std::string& path);

} // namespace vcc
