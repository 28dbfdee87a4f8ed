// The lines of a text window: one row each, from which checks, editor and page take what a line is called, its range
// and what it is for.
#pragma once

#include "vcckit/record/names.h"

#include "screen/text_window.h"

#include <cstdint>
#include <string_view>

namespace vcc::kit {

struct WindowField {
    std::string_view name; ///< "left"
    std::string_view key;  ///< "xo"; empty: the title, a line without one
    Meaning meaning = Meaning::number;
    std::string_view unit{};
    std::int64_t min = 0, max = 0;
    std::string_view help{};
    std::string_view allowed{}; ///< what is said of a number out of range; empty: no line by itself is wrong
    bool any_below = false;     ///< numbers below the range are possible, too
};

/// In the order in which the program looks for them at the beginning of a line; the title last.
inline constexpr WindowField window_fields[] = {
    {"title_colour", "f", Meaning::colour, "", 0, 255, "of the title", "0 to 255 is allowed"},
    {"colour", "c", Meaning::colour, "", -1, 255, "of fill, dots, grid and frame; below 0 no fill",
     "0 to 255 are possible; below 0 there is no fill", true},
    {"left", "xo", Meaning::number, "pixels or cells", -32768, 32767,
     "left edge: cells of the window's font, or pixels"},
    {"top", "yo", Meaning::number, "pixels or cells", -32768, 32767, "top edge"},
    {"right", "xu", Meaning::number, "pixels or cells", -32768, 32767, "right edge"},
    {"bottom", "yu", Meaning::number, "pixels or cells", -32768, 32767, "bottom edge"},
    {"style", "-", Meaning::number, "", -1, 1, "0 solid, below 0 dotted, above 0 translucent"},
    {"red", "r", Meaning::number, "", 0, 255, "of a translucent fill", "0 to 255 is allowed"},
    {"green", "g", Meaning::number, "", 0, 255, "of a translucent fill", "0 to 255 is allowed"},
    {"blue", "b", Meaning::number, "", 0, 255, "of a translucent fill", "0 to 255 is allowed"},
    {"alpha", "h", Meaning::number, "", 0, 255, "of a translucent fill", "0 to 255 is allowed"},
    {"open_sound", "o", Meaning::sound, "", 0, 189, "effect when the window opens"},
    {"close_sound", "e", Meaning::sound, "", 0, 189, "stored only"},
    {"shadow", "s", Meaning::number, "pixels", 0, 100, "width of a translucent window's shadow",
     "0 to 100 pixels are possible"},
    {"grid", "l", Meaning::number, "pixels", 0, 800, "distance of grid lines, 0 for none",
     "0 to 800 pixels are possible", true},
    {"font", "t", Meaning::font, "", 0, 10, "of cells and title", "fonts are 0 to 10"},
    {"pixels", "w", Meaning::number, "", 0, 1, "1: edges are pixels"},
    {"pointer_offset", "m", Meaning::number, "pixels", 0, 800,
     "the pointer goes this far right of the left edge; 0: it stays"},
    {"title", "", Meaning::number, "characters", 0, 243, "cannot begin with a letter of the other lines"},
};

} // namespace vcc::kit
