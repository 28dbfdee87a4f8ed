#include "display/display_scale.h"

#include "core/log.h"
#include "platform/scaled_display.h"
#include "settings/values.h"

#include <algorithm>

namespace vcc {

namespace {

struct ScaleRow {
    int value;
    platform::Fit fit;
};
constexpr ScaleRow scale_rows[] = {{1, platform::Fit::aspect}, {2, platform::Fit::whole_steps}};

bool started = false;

} // namespace

void start_display_scaling() {
    const auto* const row = std::ranges::find(scale_rows, read_number("display_scale"), &ScaleRow::value);
    if (started || row == std::end(scale_rows))
        return;
    started = true;
    if (const std::string obstacle = platform::show_scaled(row->fit); !obstacle.empty())
        write_log("The picture keeps its size: " + obstacle);
}

} // namespace vcc
