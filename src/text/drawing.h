// How text is drawn now.
#pragma once

namespace vcc {

struct DrawingState {
    int current_font = 0;  ///< font that text drawing uses
    int previous_font = 0; ///< font that was current before the last select_font()
    int grid_rows = 0;     ///< of the current font's grid
    int grid_columns = 0;  ///< of the current font's grid, one more than fit
    int text_on_box = 0;   ///< text is being drawn on a filled box: hard edges, no background restore
    int full_redraw = 0;   ///< a whole screen is being drawn on a fresh background: no background restore
};
inline DrawingState drawing;

} // namespace vcc
