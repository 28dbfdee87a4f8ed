#include "text/fonts.h"

#include "core/layout.h"
#include "core/log.h"
#include "platform/files.h"
#include "platform/truetype.h"

#include <allegro.h>

#include <algorithm>
#include <array>
#include <memory>

namespace vcc {

int current_font = 0;
int previous_font = 0;
int grid_rows = 0;
int grid_columns = 0;

namespace {

struct FontRow {
    const char* file;
    int height_px, space_px; // defaults of the settings
    int cell_width, cell_height;
    bool proportional;
};
constexpr std::array<FontRow, font_count> font_rows{{
    {"arial.ttf", 12, 1, 8, 11, true},
    {"arial.ttf", 13, 0, 9, 13, true},
    {"cour.ttf", 11, 0, 6, 11, false},
    {"cour.ttf", 11, 0, 7, 11, false},
    {"cour.ttf", 14, 0, 7, 12, false},
    {"cour.ttf", 12, 0, 7, 12, false},
    {"cour.ttf", 14, 1, 8, 14, false},
    {"cour.ttf", 16, 0, 10, 16, false},
    {"cour.ttf", 20, 0, 12, 20, false},
    {"cour.ttf", 20, 0, 12, 20, false},
    {"cour.ttf", 20, 0, 14, 20, false},
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

std::string key_of(int n, const char* what) {
    return format_text("font%d_%s", n, what);
}

int rows_of(const FontRow& metrics) {
    return std::min(layout_height / metrics.cell_height, grid_row_limit);
}

int columns_of(const FontRow& metrics) {
    return std::min(layout_width / metrics.cell_width + 1, grid_column_limit);
}

void use_grid(const FontRow& metrics) {
    grid_rows = rows_of(metrics);
    grid_columns = columns_of(metrics);
}

} // namespace

bool load_fonts(const std::string& section, const std::string& directory) {
    if (!platform::init_truetype()) {
        write_log(format_text("Error in module:%s while initializing fonts", section.c_str()));
        return false;
    }
    for (int n = 0; n < font_count; ++n) {
        const auto i = static_cast<std::size_t>(n);
        const std::string name = get_config_string(section.c_str(), key_of(n, "name").c_str(), font_rows[i].file);
        fonts[i].face =
            platform::load_truetype_font(platform::resolve_path(format_text("%s/%s", directory.c_str(), name.c_str())));
        if (!fonts[i].face) {
            write_log(format_text("Error in module:%s while loading font:%s/%s", section.c_str(), directory.c_str(),
                                  name.c_str()));
            return false;
        }
    }
    return true;
}

void configure_fonts(const std::string& section) {
    for (int n = 0; n < font_count; ++n) {
        const auto i = static_cast<std::size_t>(n);
        const FontRow& row = font_rows[i];
        const int height_px = get_config_int(section.c_str(), key_of(n, "height").c_str(), row.height_px);
        const int space_px = get_config_int(section.c_str(), key_of(n, "space").c_str(), row.space_px);
        if (platform::TrueTypeFont* face = fonts[i].face.get()) {
            face->set_size(height_px);
            face->set_extra_spacing(space_px);
            if (!row.proportional) // the default spacing is part of the cell, so that text lies in its cells
                face->set_fixed_advance(row.cell_width - row.space_px);
        }
        fonts[i].metrics = &row;
        current_font = n;
        use_grid(row);
    }
}

void select_font(int n) {
    previous_font = current_font;
    if (n == current_font)
        return;
    if (is_font(n) && font(n).metrics) {
        current_font = n;
        use_grid(*font(n).metrics);
    } else {
        current_font = fallback_font;
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
