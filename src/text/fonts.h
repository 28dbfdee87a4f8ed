// The eleven fonts, the grid of cells that each lays over the screen, and the current font.
#pragma once

#include "settings/settings.h"

#include <string>
#include <string_view>

namespace vcc {

namespace platform {
class TrueTypeFont;
}

inline constexpr int fallback_font = 4; ///< stands in for any number outside 0 to 10
inline constexpr int grid_row_limit = 200, grid_column_limit = 266;

/// How text is drawn now.
struct DrawingState {
    int current_font = 0;  ///< font that text drawing uses
    int previous_font = 0; ///< font that was current before the last select_font()
    int grid_rows = 0;     ///< of the current font's grid
    int grid_columns = 0;  ///< of the current font's grid, one more than fit
    int text_on_box = 0;   ///< text is being drawn on a filled box: hard edges, no background restore
    int full_redraw = 0;   ///< a whole screen is being drawn on a fresh background: no background restore
};
inline DrawingState drawing;

/// Loads the eleven font files that the settings name from a folder. False after a failure, which is logged here;
/// callers need no reason.
bool load_fonts(const std::string& directory);

/// Applies the sizes and spacings of the settings and builds the grids for layout_width and layout_height. Leaves font
/// 10 current.
void configure_fonts();

/// Makes font n current; font 4 if n is outside 0 to 10.
void select_font(int n);

void release_fonts();

/// Selects a font while it lives, then the previous one again.
class FontSelection {
public:
    explicit FontSelection(int n) : before_(drawing.current_font) { select_font(n); }
    ~FontSelection() { select_font(before_); }
    FontSelection& operator=(FontSelection&&) = delete;

private:
    int before_;
};

// Metrics of font n (of the fallback font outside 0 to 10) in pixels.
int cell_width(int n);
int cell_height(int n);
int text_box_height(int n);
bool proportional(int n);

/// Pixel position of a column or row in font n's grid, clamped to the grid.
int column_x(int n, int column);
int row_y(int n, int row);

/// Width of a text in font n in pixels: measured for a proportional font, one cell per character otherwise.
int text_width(int n, std::string_view text);

/// The face of font n, or null before load_fonts().
platform::TrueTypeFont* font_face(int n);

} // namespace vcc
