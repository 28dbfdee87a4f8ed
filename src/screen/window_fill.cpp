#include "screen/window_fill.h"

#include "screen/draw.h"

#include <algorithm>

namespace vcc {

namespace {

constexpr int low_byte = 0xFF;

/// Draws in a window's translucent colour for the life of the object.
class Translucent {
public:
    explicit Translucent(const TextWindow& window)
        : red_(channel(window.red)), green_(channel(window.green)), blue_(channel(window.blue)) {
        set_trans_blender(red_, green_, blue_, channel(window.alpha));
        drawing_mode(DRAW_MODE_TRANS, nullptr, 0, 0);
    }
    ~Translucent() { solid_mode(); }
    Translucent(const Translucent&) = delete;
    Translucent& operator=(const Translucent&) = delete;

    int pixel() const { return makecol(red_, green_, blue_); }

private:
    static int channel(int value) { return std::clamp(value, 0, 255); }

    int red_, green_, blue_;
};

int first_multiple(int from, int step) {
    return (from + step - 1) / step * step;
}

void draw_dots(BITMAP* target, const Rect& area, int pixel) {
    const int left = std::max(area.x1, 0), top = std::max(area.y1, 0);
    const int right = std::min(area.x2, target->w), bottom = std::min(area.y2, target->h);
    for (int y = first_multiple(top, dot_spacing); y < bottom; y += dot_spacing)
        for (int x = first_multiple(left, dot_spacing); x < right; x += dot_spacing)
            putpixel(target, x, y, pixel);
}

/// A strip without its right and bottom edge.
void fill_strip(BITMAP* target, int x1, int y1, int x2, int y2, int pixel) {
    if (x1 < x2 && y1 < y2) // the library would swap the corners
        rectfill(target, x1, y1, x2 - 1, y2 - 1, pixel);
}

void draw_shadow(BITMAP* target, const Rect& area, int width) {
    const TextWindow& style = text_windows[style_window];
    const auto [x1, y1, x2, y2] = area;
    if (style.style != 0) {
        const Translucent ink(style);
        rectfill(target, x1 + width, y2, x2, y2 + width, ink.pixel());
        rectfill(target, x2, y1 + width, x2 + width, y2 + width, ink.pixel());
    } else {
        // Pixel values, and only a low byte: odd on purpose.
        fill_strip(target, x1 + width, y2, x2 + width, y2 + width, style.title_colour);
        fill_strip(target, x2, y1 + width, x2 + width, y2 + width, style.title_colour & low_byte);
    }
}

} // namespace

void fill_window(BITMAP* target, const TextWindow& window, const Rect& area) {
    if (window.style < 0) {
        draw_dots(target, area, window.colour);
    } else if (window.style == 0) {
        fill_rect(target, area.x1, area.y1, area.x2, area.y2, window.colour); // draws nothing for a colour below 0
    } else {
        {
            const Translucent ink(window);
            rectfill(target, area.x1, area.y1, area.x2, area.y2, ink.pixel());
        }
        if (window.shadow != 0)
            draw_shadow(target, area, window.shadow);
    }
}

void draw_window_grid(BITMAP* target, const TextWindow& window, const Rect& area) {
    const int spacing = window.grid;
    if (window.style == 0 || spacing <= 0 || area.x1 >= area.x2 || area.y1 >= area.y2)
        return;
    for (int y = area.y1 + spacing; y <= area.y2; y += spacing)
        draw_hline(target, area.x1, y, area.x2, window.colour);
    if (spacing == 1) // the horizontal lines cover everything
        return;
    for (int x = area.x1 + spacing; x <= area.x2; x += spacing)
        draw_vline(target, x, area.y1, area.y2, window.colour);
}

} // namespace vcc
