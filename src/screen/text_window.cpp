#include "screen/text_window.h"

#include "core/files.h"
#include "core/geometry.h"
#include "core/lines.h"
#include "core/text.h"
#include "display/buffers.h"
#include "screen/draw.h"
#include "screen/draw_text.h"
#include "sound/music.h"
#include "sound/sound.h"
#include "text/fonts.h"

#include <algorithm>

namespace vcc {

namespace {

constexpr int low_byte = 0xFF;

void fill_translucent(BITMAP* target, const TextWindow& window, std::initializer_list<Rect> areas) {
    const auto channel = [](int value) { return std::clamp(value, 0, 255); };
    const int red = channel(window.red), green = channel(window.green), blue = channel(window.blue);
    set_trans_blender(red, green, blue, channel(window.alpha));
    drawing_mode(DRAW_MODE_TRANS, nullptr, 0, 0);
    for (const auto& [x1, y1, x2, y2] : areas)
        rectfill(target, x1, y1, x2, y2, makecol(red, green, blue));
    solid_mode();
}

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

/// Leaves the right and bottom edge out.
void fill_strip(BITMAP* target, int x1, int y1, int x2, int y2, int pixel) {
    if (x1 < x2 && y1 < y2) // the library would swap the corners
        rectfill(target, x1, y1, x2 - 1, y2 - 1, pixel);
}

void draw_shadow(BITMAP* target, const Rect& area, int width) {
    const TextWindow& style = text_windows[style_window];
    const auto [x1, y1, x2, y2] = area;
    if (style.style != 0) {
        fill_translucent(target, style, {{x1 + width, y2, x2, y2 + width}, {x2, y1 + width, x2 + width, y2 + width}});
    } else {
        // Pixel values, and only a low byte: odd on purpose.
        fill_strip(target, x1 + width, y2, x2 + width, y2 + width, style.title_colour);
        fill_strip(target, x2, y1 + width, x2 + width, y2 + width, style.title_colour & low_byte);
    }
}

/// Fills an area in the window's style: solid (nothing for a colour below 0), dotted (without the right and bottom
/// edge), or translucent with the window's shadow.
void fill_window(BITMAP* target, const TextWindow& window, const Rect& area) {
    if (window.style < 0) {
        draw_dots(target, area, window.colour);
    } else if (window.style == 0) {
        fill_rect(target, area.x1, area.y1, area.x2, area.y2, window.colour); // draws nothing for a colour below 0
    } else {
        fill_translucent(target, window, {area});
        if (window.shadow != 0)
            draw_shadow(target, area, window.shadow);
    }
}

/// Draws the window's grid lines over an area; nothing for a solid window, without a spacing, or for an empty area.
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

/// Null for a number outside the table.
const TextWindow* window_of(int number) {
    const bool exists = number >= 0 && number < text_window_count;
    return exists ? &text_windows[static_cast<std::size_t>(number)] : nullptr;
}

Rect area_of(const TextWindow& window) {
    if (window.pixel_coords)
        return {window.left, window.top, window.right, window.bottom};
    return {column_x(window.font, window.left), row_y(window.font, window.top), column_x(window.font, window.right),
            row_y(window.font, window.bottom)};
}

void restore_area(BITMAP* target, BITMAP* source, const TextWindow& window) {
    const Rect area = area_of(window);
    if (source)
        blit(source, target, area.x1, area.y1, area.x1, area.y1, area.x2 - area.x1 + window.shadow,
             area.y2 - area.y1 + window.shadow);
}

int frame_colour(const TextWindow& window, bool highlighted) {
    return highlighted ? text_windows[style_window].title_colour : window.colour;
}

void draw_title(BITMAP* target, const TextWindow& window, int first_column, int columns, int y) {
    const int offset = columns / 2 - static_cast<int>(window.title.size()) / 2;
    draw_boxed_text(target, column_x(window.font, first_column + offset), y, window.title, window.title_colour,
                    window.colour, true);
}

/// Plays the sound, restores the background (if `restores` and the window's style shows it) and draws the window.
void open_window(BITMAP* target, int number, const TextWindow& window, BITMAP* background, bool restores) {
    play_effect(window.open_sound);
    if (window.style != 0) {
        if (!window.pixel_coords)
            select_font(window.font); // stays selected: odd on purpose
        if (restores)
            restore_area(target, background, window);
    }
    (window.pixel_coords ? draw_pixel_window : draw_cell_window)(target, number, number == current_text_window);
}

struct WindowKey {
    std::string_view key;
    int TextWindow::*member;
    bool measure = false; ///< pixels or cells
};

constexpr WindowKey window_keys[] = {
    {"f", &TextWindow::title_colour}, {"c", &TextWindow::colour},       {"xo", &TextWindow::left, true},
    {"yo", &TextWindow::top, true},   {"xu", &TextWindow::right, true}, {"yu", &TextWindow::bottom, true},
    {"-", &TextWindow::style},        {"r", &TextWindow::red},          {"g", &TextWindow::green},
    {"b", &TextWindow::blue},         {"h", &TextWindow::alpha},        {"o", &TextWindow::open_sound},
    {"e", &TextWindow::close_sound},  {"s", &TextWindow::shadow, true}, {"l", &TextWindow::grid, true},
    {"t", &TextWindow::font},         {"w", &TextWindow::pixel_coords}, {"m", &TextWindow::pointer_offset, true},
};

/// True for a "-" line.
bool apply_line(std::string_view line, TextWindow& window) {
    const auto row =
        std::ranges::find_if(window_keys, [&](const WindowKey& each) { return line.starts_with(each.key); });
    if (row != std::end(window_keys)) {
        const int number = to_number(line.substr(row->key.size()));
        window.*row->member = row->measure ? as_coordinate(number) : number;
        return row->key == "-";
    }
    if (!line.starts_with('x') && !line.starts_with('y')) // unknown coordinates
        window.title = is_blank(line) ? std::string() : std::string(line);
    return false;
}

} // namespace

void draw_text_window(BITMAP* target, int number) {
    if (const TextWindow* const window = window_of(number))
        open_window(target, number, *window, graphic_buffer(window->background_buffer), true);
}

void draw_text_window_from_bitmap(BITMAP* target, int number, int restore) {
    if (const TextWindow* const window = window_of(number))
        open_window(target, number, *window, window->background_bitmap,
                    window->pixel_coords ? restore != 0 : restore == -1);
}

void draw_cell_window(BITMAP* target, int number, bool highlighted) {
    const TextWindow& window = text_windows[static_cast<std::size_t>(number)];
    const FontSelection selection(window.font);
    const Rect area = area_of(window);
    const Rect with_row{area.x1, area.y1, area.x2, area.y2 + 1};
    const bool dotted = window.style < 0;
    fill_window(target, window, window.style > 0 ? area : with_row);
    draw_window_grid(target, window, dotted ? with_row : area);
    const int frame = frame_colour(window, highlighted);
    if (frame != 0 && (window.style != 0 || window.colour >= 0))
        frame_rect(target, area.x1, area.y1, area.x2, dotted ? area.y2 : with_row.y2, frame);
    if (!window.title.empty()) {
        const int y = window.top > 0 ? row_y(window.font, window.top - 1) : area.y1 - cell_height(window.font);
        draw_title(target, window, window.left, window.right - window.left, y);
    }
    if (window.pointer_offset != 0)
        put_pointer(area.x1 + column_x(window.font, window.pointer_offset), area.y1);
}

void draw_pixel_window(BITMAP* target, int number, bool highlighted) {
    const TextWindow& window = text_windows[static_cast<std::size_t>(number)];
    const Rect area{window.left, window.top, window.right, window.bottom};
    fill_window(target, window, area);
    draw_window_grid(target, window, area);
    const int frame = frame_colour(window, highlighted);
    if (frame != 0 && window.colour >= 0)
        frame_rect(target, area.x1, area.y1, area.x2, area.y2, frame);
    const int cell = cell_width(window.font);
    if (!window.title.empty() && window.colour >= 0) {
        const FontSelection selection(window.font);
        draw_title(target, window, window.left / cell, (window.right - window.left) / cell,
                   window.top - cell_height(window.font));
    }
    if (window.pointer_offset != 0)
        put_pointer(window.left + window.pointer_offset, window.top);
}

int read_text_windows(std::string_view text, std::array<TextWindow, text_window_count>& windows, void (*each_line)()) {
    NumberedLines lines(text);
    int count = 0;
    while (const auto line = lines.next()) {
        if (each_line)
            each_line();
        const int number = line->number.value_or(0);
        if (number >= text_window_count)
            break;
        if (number < 0)
            continue;
        TextWindow& window = windows[static_cast<std::size_t>(number)];
        if (line->kind == NumberedLine::Kind::number)
            window.title.clear();
        else if (line->kind == NumberedLine::Kind::text && apply_line(line->text, window))
            ++count;
    }
    return count;
}

int load_text_windows(const std::string& path) {
    const auto text = read_file(path);
    return text ? read_text_windows(*text, text_windows, [] { feed_music(); }) : 0;
}

} // namespace vcc
