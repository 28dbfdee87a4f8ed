// Drawing: the menu, the copy to the display, text.
#include "cc/sets.h"
#include "core/installation.h"
#include "core/scope.h"
#include "core/text.h"
#include "display/buffers.h"
#include "figure.h"
#include "screen/draw.h"
#include "screen/draw_slot.h"
#include "screen/draw_text.h"
#include "settings/settings.h"
#include "text/fonts.h"
#include "world.h"

namespace vcc::bench {

namespace {

/// One call of the library a slot that is drawn.
struct BareBlit {
    BITMAP* source;
    int src_x, src_y, x, y, width, height;
    bool masked;
};

std::vector<BareBlit> bare_blits(const SlotSet& set) {
    std::vector<BareBlit> blits;
    for (const Slot& slot : set.slots) {
        if (is_hidden(slot) || is_text_window(slot))
            continue;
        if (slot.graphic != 0) {
            blits.push_back({graphic_buffer(slot.buffer), slot.src_x, slot.src_y, slot.dest_x, slot.dest_y,
                             slot.box_width - slot.src_x, slot.box_height - slot.src_y, true});
            continue;
        }
        const Point place = slot_position(slot);
        blits.push_back({graphic_buffer(backdrop_buffer), place.x, place.y, place.x, place.y,
                         text_width(slot.font, text_of(slot.text)), cell_height(slot.font), false});
    }
    std::erase_if(blits, [](const BareBlit& each) { return each.source == nullptr; });
    return blits;
}

void draw_bare(const std::vector<BareBlit>& blits) {
    for (const BareBlit& each : blits)
        (each.masked ? masked_blit : blit)(each.source, target(), each.src_x, each.src_y, each.x, each.y, each.width,
                                           each.height);
}

void menu_redraw(benchmark::State& state) {
    const std::vector<BareBlit> blits = bare_blits(menu_set);
    compare(
        state, no_limit, [&] { benchmark::DoNotOptimize(draw_slot_set(target(), menu_set)); },
        [&] { draw_bare(blits); });
    state.counters["slots"] = static_cast<double>(blits.size());
}
VELDOR_FIGURE(menu_redraw);

void copy_to_display(benchmark::State& state) {
    compare(
        state, 1.2, [] { update_screen(target()); },
        [] { blit(target(), screen, 0, 0, 0, 0, layout_width, layout_height); });
}
VELDOR_FIGURE(copy_to_display);

constexpr std::string_view line = "The quick Brontar walks over 12 lazy mud holes, and back again.";

/// A line of text against one sprite of a cell's size a character.
void draw_line(benchmark::State& state, bool smoothed) {
    const FontSelection font(4);
    const SwitchSet smooth(anti_aliased_text, smoothed ? 1 : 0);
    const SwitchSet fresh(drawing.full_redraw, 1); // without the restoring of the background
    const int width = cell_width(drawing.current_font), height = cell_height(drawing.current_font);
    const BitmapPtr sprite(create_bitmap(width, height));
    clear_to_color(sprite.get(), bitmap_mask_color(sprite.get()));
    textout_ex(sprite.get(), ::font, "B", 0, 0, makecol(255, 255, 255), -1);
    compare(
        state, no_limit, [] { draw_text(target(), 20, 300, line, 15, false); },
        [&] {
            for (int i = 0; i < static_cast<int>(line.size()); ++i)
                draw_sprite(target(), sprite.get(), 20 + i * width, 320);
        });
}
void draw_hard_text(benchmark::State& state) {
    draw_line(state, false);
}
VELDOR_FIGURE(draw_hard_text);

void draw_smooth_text(benchmark::State& state) {
    draw_line(state, true);
}
VELDOR_FIGURE(draw_smooth_text);

} // namespace

} // namespace vcc::bench
