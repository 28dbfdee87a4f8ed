#include "display/display_scale.h"

#include "core/log.h"
#include "settings/values.h"
#include "x11/library_display.h"
#include "x11/scaled_display.h"

#include <algorithm>

namespace vcc {

namespace {

struct ScaleRow {
    int value;
    platform::Fit fit;
};
constexpr ScaleRow scale_rows[] = {{1, platform::Fit::aspect}, {2, platform::Fit::whole_steps}};

bool started = false;

platform::WindowPlace remembered_window() {
    const int x = read_number("window_x"), y = read_number("window_y");
    return {{x, y, x + read_number("window_width"), y + read_number("window_height")},
            read_number("window_maximised") != 0};
}

} // namespace

void start_display_scaling() {
    if (started)
        return;
    started = true;
    const auto* const row = std::ranges::find(scale_rows, read_number("display_scale"), &ScaleRow::value);
    if (row != std::end(scale_rows)) {
        const std::string obstacle = platform::show_scaled(row->fit, remembered_window());
        if (obstacle.empty())
            return;
        write_log("The picture keeps its size: " + obstacle);
    }
    platform::tend_library_windows();
}

void remember_window() {
    const std::optional<platform::WindowPlace> place = platform::window_place();
    if (!place)
        return;
    write_number("window_maximised", place->maximised ? 1 : 0);
    if (place->area.empty())
        return;
    write_number("window_width", place->area.size().width);
    write_number("window_height", place->area.size().height);
    write_number("window_x", std::max(0, place->area.x1));
    write_number("window_y", std::max(0, place->area.y1));
}

} // namespace vcc
