#include "display/buffers.h"

namespace vcc {

BITMAP* graphic_buffer(int number) {
    if (number < 0 || number >= graphic_buffer_count)
        return nullptr;
    return graphic_buffers[static_cast<std::size_t>(number)].get();
}

void copy_to_screen(BITMAP* picture) {
    if (!picture || !screen)
        return;
    acquire_screen();
    blit(picture, screen, 0, 0, 0, 0, layout_width, layout_height);
    release_screen();
}

BitmapPtr copy_of(BITMAP* picture) {
    BitmapPtr copy(create_bitmap(picture->w, picture->h));
    if (copy)
        blit(picture, copy.get(), 0, 0, 0, 0, picture->w, picture->h);
    return copy;
}

void release_graphic_buffers() {
    graphic_buffers = {};
}

} // namespace vcc
