#include "display/backgrounds.h"

#include "core/installation.h"
#include "display/buffers.h"
#include "display/picture.h"

namespace vcc {

namespace {

std::array<BitmapPtr, path::backgrounds.size()> pictures; // empty again before the library is shut down

} // namespace

int load_backgrounds() {
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        // Their palettes in buffer 0: odd on purpose.
        pictures[i] = load_picture(path::backgrounds[i], &buffer_palettes[screen_buffer]).value_or(nullptr);
        if (!pictures[i])
            return static_cast<int>(i) + 1;
    }
    return 0;
}

void show_next_background() {
    const auto step = static_cast<unsigned>(background_rotation);
    background_rotation = static_cast<int>(step + 1);
    copy_to_screen(pictures[step % pictures.size()].get());
}

void free_backgrounds() {
    pictures = {};
}

} // namespace vcc
