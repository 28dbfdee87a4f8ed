#include "vcckit/source/alignment.h"

#include "core/text.h"
#include "screen/draw_slot.h"
#include "text/fonts.h"

#include <algorithm>

namespace vcc::kit {

namespace {

void set_place(Slot& slot, int x, int y) {
    // A position in pixels counts only if neither coordinate is 0.
    slot.dest_x = std::max(x, 1);
    slot.dest_y = std::max(y, 1);
    slot.column = slot.row = 0;
}

} // namespace

TextMeasure measure_of_fonts(bool loaded) {
    return {loaded, text_width, cell_height, slot_position};
}

Aligned align(const Slot& slot, const Alignment& alignment, const TextMeasure& measure, bool selectable) {
    Aligned out{slot};
    const auto fail = [&](const char* fault, const char* advice) {
        out.fault = fault;
        out.advice = advice;
        return out;
    };
    if (slot.graphic != 0)
        return fail("only a text can be aligned", "a picture is placed by dest_x and dest_y");
    if (slot.font < 0 || slot.font >= font_count)
        return out; // reported where the font is checked
    if (slot.box_width <= 0)
        return fail("the text has no width to be aligned in", "give the record a box_width");
    if (!measure.usable)
        return fail("the text cannot be measured",
                    "the fonts of the installation cannot be loaded: vcckit check says why");
    std::string text(vcc::text_of(slot.text));
    trim_right(text);
    const int room = slot.box_width - measure.width(slot.font, text);
    if (room < 2 * alignment.padding_x)
        return fail("the text is wider than its box", "shorten it, widen the box or reduce the padding");
    const auto [x, y] = measure.position(slot);
    const int shift = alignment.align == Align::centre  ? room / 2
                      : alignment.align == Align::right ? room - alignment.padding_x
                                                        : alignment.padding_x;
    if (slot.box_height <= 0) {
        set_place(out.slot, x + shift, y + alignment.padding_y);
        return out;
    }
    if (selectable) {
        const int blank = std::max(measure.width(slot.font, " "), 1);
        const int blanks = std::max((shift + blank / 2) / blank, 0);
        const std::string moved = std::string(static_cast<std::size_t>(blanks), ' ') + text;
        if (moved.size() >= sizeof slot.text)
            return fail("the blanks before the text do not fit", "shorten the text, or narrow the box");
        store_text(out.slot.text, moved);
        return out;
    }
    const int below = slot.box_height - measure.height(slot.font);
    if (below < 2 * alignment.padding_y)
        return fail("the text is taller than its box", "increase box_height or reduce the padding");
    store_text(out.plate.emplace(slot).text, "");
    out.slot.box_width = out.slot.box_height = 0;
    set_place(out.slot, x + shift, y + below / 2);
    return out;
}

} // namespace vcc::kit
