// Text-window files: read, then every window drawn.
#include "world.h"

#include "display/buffers.h"
#include "screen/text_window.h"

using namespace vcc;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::World::start().use_fonts();
    static const BitmapPtr target(create_bitmap(800, 600));
    if (!graphic_buffers[3])
        graphic_buffers[3].reset(create_bitmap(800, 600));
    text_windows = {};
    read_text_windows(fuzz::as_text(data, size), text_windows, nullptr);
    for (int window = 0; window < text_window_count; ++window) {
        current_text_window = window % 2 == 0 ? window : 0;
        draw_text_window(target.get(), window);
        draw_text_window_from_bitmap(target.get(), window, -1);
    }
    return 0;
}
