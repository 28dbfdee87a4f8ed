// Aligned texts: where the packer places them in their boxes.
#pragma once

#include "core/geometry.h"
#include "screen/slot.h"
#include "vcckit/faults/source_place.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vcc::kit {

enum class Align { left, centre, right };

/// The alignment of a text in its box, as a source gives it. `padding` is the distance from the edges in pixels.
struct Alignment {
    Align align = Align::left;
    int padding_x = 0, padding_y = 0;
    Place place; ///< line 0: not given

    bool wanted() const { return place.line > 0; }
};

/// The font metrics of an installation that alignment needs; `usable` is false if the fonts cannot be loaded.
struct TextMeasure {
    bool usable = false;
    std::function<int(int font, std::string_view text)> width; ///< pixels
    std::function<int(int font)> height;                       ///< pixels of a row
    std::function<Point(const Slot&)> position;                ///< of its corner
};

/// Metrics of the program's fonts, if these are loaded.
TextMeasure measure_of_fonts(bool loaded);

/// The result of aligning a record.
struct Aligned {
    Slot slot{};
    std::optional<Slot> plate{};   ///< the box as a record of its own, under the text
    std::string fault{}, advice{}; ///< if there is one, the records must not be used
};

/// Places a text without a box to the pixel between the edges that `box_width` gives; likewise the text of a label with
/// a box, which becomes a plate. Text and box of a selectable slot are one record with one corner: blanks before the
/// text move it, to the nearest blank's width, and it stays at the top. Pure.
Aligned align(const Slot& slot, const Alignment& alignment, const TextMeasure& measure, bool selectable);

} // namespace vcc::kit
