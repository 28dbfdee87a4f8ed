#include "display/buffers.h"

#include "core/installation.h"

namespace vcc {

std::array<BitmapPtr, graphic_buffer_count> graphic_buffers;
std::array<PALETTE, graphic_buffer_count> buffer_palettes{};

BITMAP* graphic_buffer(int number) {
    if (number < 0 || number >= graphic_buffer_count)
        return nullptr;
    return graphic_buffers[static_cast<std::size_t>(number)].get();
}

void show_buffer_zero() {
    show_mouse(nullptr);
    BITMAP* const picture = graphic_buffer(screen_buffer);
    if (picture && screen) {
        acquire_screen();
        blit(picture, screen, 0, 0, 0, 0, picture_width, picture_height);
        release_screen();
    }
    show_mouse(screen);
}

void release_graphic_buffers() {
    for (BitmapPtr& buffer : graphic_buffers)
        buffer.reset();
}

} // namespace vcc
