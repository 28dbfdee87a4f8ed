#include "screen/status_line.h"

#include "core/installation.h"
#include "display/buffers.h"
#include "screen/draw.h"
#include "screen/draw_text.h"
#include "text/fonts.h"

namespace vcc {

namespace {

constexpr int text_colour = 4, line_colour = 15;
constexpr int left_column = 1, text_column = 2, rows_from_bottom = 3;

int status_x = 0, status_y = 0;

} // namespace

void place_status_line() {
    status_x = column_x(drawing.current_font, text_column);
    status_y = row_y(drawing.current_font, drawing.grid_rows - rows_from_bottom);
}

void show_status(std::string_view first, std::string_view second, int font) {
    BITMAP* const target = graphic_buffer(screen_buffer);
    if (!target)
        return;
    const FontSelection selection(font);
    const auto write = [target](int x, std::string_view text) {
        draw_boxed_text(target, x, status_y, text, text_colour, line_colour, false);
    };
    const int first_width = text_width(drawing.current_font, first);
    if (first_width + text_width(drawing.current_font, second) >= layout_width) {
        write(status_x, "Message was too long!");
        return;
    }
    fill_text_box(target, column_x(drawing.current_font, left_column), status_y,
                  column_x(drawing.current_font, drawing.grid_columns - 2), line_colour);
    write(status_x, first);
    write(status_x + first_width, second);
}

} // namespace vcc
