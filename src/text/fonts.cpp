#include "text/fonts.h"

#include "core/installation.h"
#include "core/log.h"
#include "platform/files.h"
#include "platform/truetype.h"
#include "settings/values.h"

#include <allegro.h>

#include <algorithm>
#include <array>
#include <memory>

namespace vcc {

namespace {

/// What is fixed; file, size and spacing are settings.
struct FontRow {
    int cell_width, cell_height; // pixels
    bool proportional;
};
constexpr std::array<FontRow, font_count> font_rows{{
    {8, 11, true},
    {9, 13, true},
    {6, 11, false},
    {7, 11, false},
    {7, 12, false},
    {7, 12, false},
    {8, 14, false},
    {10, 16, false},
    {12, 20, false},
    {12, 20, false},
    {14, 20, false},
}};

struct Font {
    std::unique_ptr<platform::TrueTypeFont> face;
    const FontRow* metrics = nullptr; // null until the font is configured
};
std::array<Font, font_count> fonts;

bool is_font(int n) {
    return n >= 0 && n < font_count;
}

const Font& font(int n) {
    return fonts[static_cast<std::size_t>(is_font(n) ? n : fallback_font)];
}

int rows_of(const FontRow& metrics) {
    return std::min(layout_height / metrics.cell_height, grid_row_limit);
}

int columns_of(const FontRow& metrics) {
    return std::min(layout_width / metrics.cell_width + 1, grid_column_limit);
}

void use_grid(const FontRow& metrics) {
    drawing.grid_rows = rows_of(metrics);
    drawing.grid_columns = columns_of(metrics);
}

} // namespace

bool load_fonts(const std::string& directory) {
    if (!platform::init_truetype()) {
        write_log(format_text("Error in module:%s while initializing fonts", font_section));
        return false;
    }
    for (int n = 0; n < font_count; ++n) {
        const auto i = static_cast<std::size_t>(n);
        const std::string name = read_text("font#_name", n);
        fonts[i].face =
            platform::load_truetype_font(platform::resolve_path(format_text("%s/%s", directory.c_str(), name.c_str())));
        if (!fonts[i].face) {
            write_log(format_text("Error in module:%s while loading font:%s/%s", font_section, directory.c_str(),
                                  name.c_str()));
            return false;
        }
    }
    return true;
}

void configure_fonts() {
    for (int n = 0; n < font_count; ++n) {
        const auto i = static_cast<std::size_t>(n);
        const FontRow& row = font_rows[i];
        if (platform::TrueTypeFont* face = fonts[i].face.get()) {
            face->set_size(read_number("font#_height", n));
            face->set_extra_spacing(read_number("font#_space", n));
            if (!row.proportional) // the default spacing is part of the cell, so that text lies in its cells
                face->set_fixed_advance(row.cell_width - standard_number("font#_space", n));
        }
        fonts[i].metrics = &row;
        drawing.current_font = n;
        use_grid(row);
    }
}

void select_font(int n) {
    drawing.previous_font = drawing.current_font;
    if (n == drawing.current_font)
        return;
    if (is_font(n) && font(n).metrics) {
        drawing.current_font = n;
        use_grid(*font(n).metrics);
    } else {
        drawing.current_font = fallback_font;
    }
}

void release_fonts() {
    for (Font& each : fonts)
        each.face.reset();
    platform::exit_truetype();
}

int cell_width(int n) {
    return font(n).metrics ? font(n).metrics->cell_width : 0;
}

int cell_height(int n) {
    return font(n).metrics ? font(n).metrics->cell_height : 0;
}

int text_box_height(int n) {
    return cell_height(n);
}

bool proportional(int n) {
    return font(n).metrics && font(n).metrics->proportional;
}

int column_x(int n, int column) {
    const FontRow* metrics = font(n).metrics;
    return metrics ? std::clamp(column, 0, std::max(columns_of(*metrics) - 1, 0)) * metrics->cell_width : 0;
}

int row_y(int n, int row) {
    const FontRow* metrics = font(n).metrics;
    return metrics ? std::clamp(row, 0, std::max(rows_of(*metrics) - 1, 0)) * metrics->cell_height : 0;
}

int text_width(int n, std::string_view text) {
    const platform::TrueTypeFont* face = font_face(n);
    if (proportional(n) && face)
        return face->text_length(text);
    return static_cast<int>(text.size()) * cell_width(n);
}

platform::TrueTypeFont* font_face(int n) {
    return font(n).face.get();
}

} // namespace vcc
