// Smoothed edges are blended into the background, so a text would grow bolder each time it is drawn. Unless the whole
// screen is being drawn, the background is therefore restored first, from a clean copy.
#include "screen/draw_text.h"

#include "core/geometry.h"
#include "core/scope.h"
#include "display/buffers.h"
#include "media/truetype.h"
#include "screen/colours.h"
#include "screen/draw.h"
#include "settings/settings.h"
#include "text/fonts.h"

#include <optional>

namespace vcc {

namespace {

void draw(BITMAP* target, int x, int y, std::string_view text, int colour, std::optional<int> shadow_pixel,
          bool update) {
    x = as_coordinate(x);
    y = as_coordinate(y);
    platform::TrueTypeFont* const face = font_face(drawing.current_font);
    if (face && is_colour(colour)) {
        const bool smooth = anti_aliased_text && !drawing.text_on_box;
        if (smooth && !drawing.full_redraw)
            restore_behind_text(graphic_buffer(text_copy_buffer), target, x, y, text);
        if (shadow_pixel)
            face->draw(target, text, x + 1, y + 1, *shadow_pixel, true);
        face->draw(target, text, x, y, pixel_of(colour), smooth);
    }
    if (update)
        update_screen(target);
}

} // namespace

void restore_behind_text(BITMAP* clean, BITMAP* target, int x, int y, std::string_view text) {
    if (clean)
        blit(clean, target, x, y, x, y, as_coordinate(text_width(drawing.current_font, text)),
             cell_height(drawing.current_font) + 1);
}

void draw_text(BITMAP* target, int x, int y, std::string_view text, int colour, bool update) {
    draw(target, x, y, text, colour, std::nullopt, update);
}

void draw_boxed_text(BITMAP* target, int x, int y, std::string_view text, int colour, int box_colour, bool update) {
    fill_text_box(target, x, y, text_width(drawing.current_font, text), box_colour);
    const SwitchSet on_box(drawing.text_on_box, anti_aliased_text ? 1 : drawing.text_on_box);
    draw_text(target, x, y, text, colour, update);
}

void draw_shadow_text(BITMAP* target, int x, int y, std::string_view text, int colour, int shadow_pixel, bool update) {
    draw(target, x, y, text, colour, shadow_pixel, update);
}

int text_cell_width(std::string_view text) {
    return as_coordinate(static_cast<int>(text.size())) * cell_width(drawing.current_font);
}

} // namespace vcc
