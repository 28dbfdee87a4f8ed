// Texts that do not stick to the corner of their box: where the packer puts them.
#pragma once

#include "screen/slot.h"
#include "source_place.h"

#include <functional>
#include <string>
#include <string_view>

namespace vcc::kit {

enum class Align { none, left, centre, right };

/// What a source says of a text in its box. `padding` keeps the text away from the edges, in pixels.
struct Alignment {
    Align align = Align::none;
    int padding_x = 0, padding_y = 0;
    Place place; ///< line 0: nothing is said

    bool wanted() const { return place.line > 0; }
};

/// The fonts of an installation, as far as alignment needs them; `usable` is false when they cannot be loaded.
struct TextMeasure {
    bool usable = false;
    std::function<int(int font, std::string_view text)> width; ///< pixels
    std::function<int(int font)> height;                       ///< pixels of a row
    std::function<std::pair<int, int>(const Slot&)> position;  ///< pixels of its corner
};

/// The measure of the fonts that are loaded.
TextMeasure measure_of_loaded_fonts();

/// What the packer makes of an aligned record.
struct Aligned {
    Slot slot{};
    bool has_plate = false; ///< the box became a record of its own, under the text
    Slot plate{};
    std::string fault, advice; ///< when there is one, the records must not be used
};

/// A text without a box is placed to the pixel between the edges that `box_width` gives. So is a label's text with a
/// box, which becomes a plate. A text and a box that can be selected are one record and have one corner: blanks before
/// the text move it, to the nearest blank's width, and it stays at the top. Pure.
Aligned align(const Slot& slot, const Alignment& alignment, const TextMeasure& measure, bool selectable);

} // namespace vcc::kit
