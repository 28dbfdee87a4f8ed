#include "film/film_screen.h"

#include "core/installation.h"

namespace vcc {

FilmScreen::FilmScreen(const platform::AviFrame& first)
    : picture_(create_bitmap(layout_width, layout_height)),
      place_(place_film(first.width, first.height, layout_width, layout_height)) {
    if (!picture_ || !screen)
        return;
    clear_to_color(picture_.get(), makecol(0, 0, 0));
    blit(picture_.get(), screen, 0, 0, 0, 0, SCREEN_W, SCREEN_H);
    in_place_ = first.bits == bitmap_color_depth(picture_.get()) && first.width == place_.width &&
                first.height == place_.height;
    surface_.reset(in_place_ ? create_sub_bitmap(picture_.get(), place_.x, place_.y, place_.width, place_.height)
                             : create_bitmap_ex(first.bits, first.width, first.height));
    if (surface_)
        clear_bitmap(surface_.get());
}

void FilmScreen::show(const platform::AviFrame& frame) {
    decode_frame(surface_.get(), frame);
    if (!in_place_)
        convert(frame);
    blit(picture_.get(), screen, place_.x, place_.y, place_.x, place_.y, place_.width, place_.height);
}

// The picture has the screen's depth: only the film's pixels are converted, and the border stays black whatever the
// film's colour table holds.
void FilmScreen::convert(const platform::AviFrame& frame) {
    PALETTE palette;
    if (frame.bits == 8) {
        film_palette(frame, palette);
        select_palette(palette);
    }
    blit(surface_.get(), picture_.get(), place_.source_x, place_.source_y, place_.x, place_.y, place_.width,
         place_.height);
    if (frame.bits == 8)
        unselect_palette();
}

} // namespace vcc
