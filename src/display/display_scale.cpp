#include "display/display_scale.h"

#include "core/log.h"
#include "platform/scaled_display.h"

#include <allegro.h>

#include <algorithm>
#include <string_view>

namespace vcc {

namespace {

struct ScaleRow {
    std::string_view value;
    platform::Fit fit;
};
constexpr ScaleRow rows[] = {{"1", platform::Fit::aspect}, {"2", platform::Fit::whole_steps}};

bool started = false;

} // namespace

void start_display_scaling() {
    const std::string_view value = get_config_string("VELDOR_GRAPHICS", "display_scale", "0");
    const auto* const row = std::ranges::find(rows, value, &ScaleRow::value);
    if (started || row == std::end(rows))
        return;
    started = true;
    if (const std::string obstacle = platform::show_scaled(row->fit); !obstacle.empty())
        write_log("The picture keeps its size: " + obstacle);
}

} // namespace vcc
