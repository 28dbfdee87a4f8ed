#include "display/backgrounds.h"

#include "core/installation.h"
#include "display/buffers.h"
#include "display/picture.h"

namespace vcc {

int background_rotation = 0;

namespace {

// Released in every pass before the screens run, and by free_backgrounds() before the library goes.
std::array<BitmapPtr, path::backgrounds.size()> pictures;

} // namespace

std::vector<std::string> background_paths() {
    return {path::backgrounds.begin(), path::backgrounds.end()};
}

int load_backgrounds() {
    const std::vector<std::string> paths = background_paths();
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        pictures[i] = load_picture(paths[i], &buffer_palettes[screen_buffer]).value_or(nullptr);
        if (!pictures[i])
            return static_cast<int>(i) + 1;
    }
    return 0;
}

void show_next_background() {
    const auto step = static_cast<unsigned>(background_rotation);
    BITMAP* const picture = pictures[step % pictures.size()].get();
    background_rotation = static_cast<int>(step + 1);
    if (!picture || !screen)
        return;
    acquire_screen();
    blit(picture, screen, 0, 0, 0, 0, picture_width, picture_height);
    release_screen();
}

void free_backgrounds() {
    for (BitmapPtr& picture : pictures)
        picture.reset();
}

} // namespace vcc
