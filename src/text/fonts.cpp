#include "text/fonts.h"

#include "core/installation.h"
#include "core/log.h"
#include "media/truetype.h"
#include "platform/files.h"
#include "settings/values.h"

#include <allegro.h>

#include <algorithm>
#include <array>
#include <memory>

namespace vcc {

namespace {

// File, size and spacing of the fonts are settings; their cells are not.
constexpr std::array<int, font_count> cell_widths{8, 9, 6, 7, 7, 7, 8, 10, 12, 12, 14};
constexpr std::array<int, font_count> cell_heights{11, 13, 11, 11, 12, 12, 14, 16, 20, 20, 20};
constexpr std::size_t proportional_fonts = 2; ///< the first ones

std::array<std::unique_ptr<platform::TrueTypeFont>, font_count> faces;

bool is_font(int n) {
    return n >= 0 && n < font_count;
}

std::size_t index_of(int n) {
    return static_cast<std::size_t>(is_font(n) ? n : fallback_font);
}

int rows_of(int n) {
    return layout_height / cell_height(n);
}

int columns_of(int n) {
    return layout_width / cell_width(n) + 1;
}

void use_grid(int n) {
    drawing.current_font = n;
    drawing.grid_rows = rows_of(n);
    drawing.grid_columns = columns_of(n);
}

} // namespace

bool load_fonts(const std::string& directory) {
    if (!platform::init_truetype()) {
        write_log(format_text("Error in module:%s while initializing fonts", module_prefix.c_str()));
        return false;
    }
    for (int n = 0; n < font_count; ++n) {
        auto& face = faces[index_of(n)];
        const std::string name = read_text("font#_name", n);
        face =
            platform::load_truetype_font(platform::resolve_path(format_text("%s/%s", directory.c_str(), name.c_str())));
        if (!face) {
            write_log(format_text("Error in module:%s while loading font:%s/%s", font_section, directory.c_str(),
                                  name.c_str()));
            return false;
        }
    }
    return true;
}

void configure_fonts() {
    for (int n = 0; n < font_count; ++n)
        if (platform::TrueTypeFont* const face = font_face(n)) {
            face->set_size(read_number("font#_height", n));
            const std::size_t i = index_of(n);
            const bool fixed = i >= proportional_fonts; // the cell includes the default spacing
            face->set_spacing(fixed ? cell_widths[i] - rows::font_spaces[i] : 0, read_number("font#_space", n));
        }
    use_grid(font_count - 1);
}

void select_font(int n) {
    drawing.previous_font = drawing.current_font;
    if (n == drawing.current_font)
        return;
    if (is_font(n))
        use_grid(n);
    else
        drawing.current_font = fallback_font; // in the grid of the font before: odd on purpose
}

void release_fonts() {
    for (auto& face : faces)
        face.reset();
    platform::exit_truetype();
}

int cell_width(int n) {
    return cell_widths[index_of(n)];
}

int cell_height(int n) {
    return cell_heights[index_of(n)];
}

int text_box_height(int n) {
    return cell_height(n);
}

bool proportional(int n) {
    return index_of(n) < proportional_fonts;
}

int column_x(int n, int column) {
    return std::clamp(column, 0, columns_of(n) - 1) * cell_width(n);
}

int row_y(int n, int row) {
    return std::clamp(row, 0, rows_of(n) - 1) * cell_height(n);
}

int text_width(int n, std::string_view text) {
    const platform::TrueTypeFont* face = font_face(n);
    if (proportional(n) && face)
        return face->text_length(text);
    return static_cast<int>(text.size()) * cell_width(n);
}

platform::TrueTypeFont* font_face(int n) {
    return faces[index_of(n)].get();
}

} // namespace vcc
