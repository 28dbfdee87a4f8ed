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

void copy_picture(BITMAP* from, BITMAP* to) {
    if (from && to)
        blit(from, to, 0, 0, 0, 0, layout_width, layout_height);
}

void show_buffer_zero() {
    show_mouse(nullptr);
    copy_to_screen(graphic_buffer(screen_buffer));
    show_mouse(screen);
}

void release_graphic_buffers() {
    for (BitmapPtr& buffer : graphic_buffers)
        buffer.reset();
}

} // namespace vcc
