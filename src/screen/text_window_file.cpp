#include "screen/text_window_file.h"

#include "core/files.h"
#include "core/geometry.h"
#include "core/lines.h"
#include "core/text.h"
#include "sound/music.h"

namespace vcc {

namespace {

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

const WindowKey* key_of_line(std::string_view line) {
    for (const WindowKey& each : window_keys)
        if (line.starts_with(each.key))
            return &each;
    return nullptr;
}

/// Comments, and unknown coordinates.
bool is_ignored(std::string_view line) {
    return !line.empty() && (line[0] == '#' || line[0] == 'x' || line[0] == 'y');
}

/// True for a "-" line.
bool apply_line(std::string_view line, TextWindow& window) {
    if (const WindowKey* row = key_of_line(line)) {
        const int number = to_number(line.substr(row->key.size()));
        window.*row->member = row->measure ? as_coordinate(number) : number;
        return row->key == "-";
    }
    if (!is_ignored(line))
        window.title = is_blank(line) ? std::string() : std::string(line);
    return false;
}

} // namespace

int read_text_windows(std::string_view text, std::array<TextWindow, text_window_count>& windows, void (*each_line)()) {
    LineReader lines(text);
    TextWindow* current = &windows[0];
    int count = 0;
    while (const auto line = lines.next()) {
        if (each_line)
            each_line();
        if (!line->starts_with('+')) {
            if (current && apply_line(*line, *current))
                ++count;
            continue;
        }
        const int number = to_number(line->substr(1));
        if (number >= text_window_count)
            break;
        current = number < 0 ? nullptr : &windows[static_cast<std::size_t>(number)];
        if (current)
            current->title.clear();
    }
    return count;
}

int load_text_windows(const std::string& path) {
    const auto text = read_file(path);
    return text ? read_text_windows(*text, text_windows, [] { feed_music(); }) : 0;
}

} // namespace vcc
