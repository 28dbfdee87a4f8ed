#include "display/display_scale.h"

#include "core/log.h"
#include "settings/values.h"
#include "x11/scaled_display.h"

#include <algorithm>

namespace vcc {

namespace {

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
    const auto fit = static_cast<platform::Fit>(read_number("display_scale"));
    if (const std::string obstacle = platform::show_scaled(fit, remembered_window()); !obstacle.empty())
        write_log("The picture keeps its size: " + obstacle);
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
