// The size of the logical screen, which every grid and every picture refers to.
#pragma once

namespace vcc {

extern int layout_width;  ///< pixels; 800 from the first pass on
extern int layout_height; ///< pixels; 600 from the first pass on

} // namespace vcc
