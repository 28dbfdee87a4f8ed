// Text-window files: read, then every window drawn.
#include "display/buffers.h"
#include "screen/text_window.h"
#include "world.h"

void vcc::fuzz::one_input(std::string_view input) {
    BITMAP* const page = page_with_fonts();
    if (!graphic_buffers[3])
        graphic_buffers[3].reset(create_bitmap(800, 600));
    text_windows = {};
    read_text_windows(input, text_windows);
    for (int window = 0; window < text_window_count; ++window) {
        current_text_window = window % 2 == 0 ? window : 0;
        draw_text_window(page, window);
        draw_text_window_from_bitmap(page, window, -1);
    }
}
