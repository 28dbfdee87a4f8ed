#include "film/film.h"

#include "core/clock.h"
#include "core/gamepad.h"
#include "core/geometry.h"
#include "core/installation.h"
#include "core/log.h"
#include "core/mouse_buttons.h"
#include "core/scope.h"
#include "core/window_state.h"
#include "media/avi.h"
#include "platform/files.h"
#include "sound/music.h"
#include "sound/sound.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <optional>

namespace vcc {

namespace {

// The library's shifts are read once per row: the compiler must assume that any byte written could change them.
using RowConverter = void (*)(const std::uint8_t* source, unsigned char* target, int width);

void copy_8(const std::uint8_t* source, unsigned char* target, int width) {
    std::memcpy(target, source, static_cast<std::size_t>(width));
}

void convert_16(const std::uint8_t* source, unsigned char* target, int width) {
    const int red_shift = _rgb_r_shift_16, green_shift = _rgb_g_shift_16, blue_shift = _rgb_b_shift_16;
    for (int x = 0; x < width; ++x, source += 2, target += 2) {
        const int stored = source[0] | source[1] << 8;
        const int red = stored >> 10 & 31, green = (stored >> 5 & 31) * 255 / 31 >> 2, blue = stored & 31;
        const auto pixel = static_cast<std::uint16_t>(red << red_shift | green << green_shift | blue << blue_shift);
        std::memcpy(target, &pixel, sizeof pixel);
    }
}

/// 24 and 32 bits.
template <int bytes>
void convert(const std::uint8_t* source, unsigned char* target, int width) {
    const int red_shift = bytes == 3 ? _rgb_r_shift_24 : _rgb_r_shift_32,
              green_shift = bytes == 3 ? _rgb_g_shift_24 : _rgb_g_shift_32,
              blue_shift = bytes == 3 ? _rgb_b_shift_24 : _rgb_b_shift_32;
    for (int x = 0; x < width; ++x, source += bytes, target += bytes) {
        const std::uint32_t pixel = std::uint32_t{source[2]} << red_shift | std::uint32_t{source[1]} << green_shift |
                                    std::uint32_t{source[0]} << blue_shift;
        std::memcpy(target, &pixel, bytes);
    }
}

/// By bytes per pixel, from 1.
constexpr RowConverter converters[] = {copy_8, convert_16, convert<3>, convert<4>};

constexpr int film_effect_volume = 150;

const char* error_text(platform::AviError error) {
    constexpr std::array<const char*, 7> texts{"Bad AVI file format!",
                                               "Memory exhausted!",
                                               "File does not exist, or error reading from the file!",
                                               "File does not contain a video stream!",
                                               "Unable to read audio stream format!",
                                               "Unable to read video stream format!",
                                               "Error initializing video decompressor!"};
    static_assert(static_cast<std::size_t>(platform::AviError::other) == texts.size() + 1);
    const std::size_t i = static_cast<std::size_t>(error) - 1; // `none` wraps around
    return i < texts.size() ? texts[i] : "Unknown error code!";
}

bool stop_requested() {
    poll_gamepads();
    return skip_requested() != 0 || close_requested != 0;
}

void play(platform::AviFilm& film, FilmScreen& target) {
    using Clock = std::chrono::steady_clock;
    scare_mouse(); // the pointer is drawn into the screen, where the film would overwrite it
    const AtEnd pointer_again(unscare_mouse);
    const auto time_ms = [begin = Clock::now()] {
        return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin).count();
    };
    std::int64_t shown = -1; // number of the frame on the screen
    // A damaged film can turn out to be shorter than it was at the beginning.
    for (auto now = time_ms(); now < film.end_ms() && !stop_requested(); now = time_ms()) {
        const platform::AviFrame* frame = film.frame_at(static_cast<int>(now));
        if (frame && frame->number != shown) {
            target.show(*frame);
            shown = frame->number;
        } else {
            rest(1); // the frame has not changed
        }
    }
}

} // namespace

FilmPlace place_film(int film_width, int film_height, int screen_width, int screen_height) {
    FilmPlace place;
    place.width = std::min(film_width, screen_width);
    place.height = std::min(film_height, screen_height);
    centre_in(place.x, place.y, screen_width, screen_height, place.width, place.height);
    centre_in(place.source_x, place.source_y, film_width, film_height, place.width, place.height);
    return place;
}

void decode_frame(BITMAP* surface, const platform::AviFrame& frame) {
    const RowConverter convert_row = converters[frame.bits / 8 - 1];
    for (int y = 0; y < frame.height; ++y)
        convert_row(frame.row(y).data(), surface->line[y], frame.width);
}

void film_palette(const platform::AviFrame& frame, PALETTE palette) {
    const auto part = [&frame](std::size_t at) { return static_cast<unsigned char>(frame.colour_table[at] >> 2); };
    for (std::size_t i = 0; i < PAL_SIZE; ++i) // the library counts to 63
        palette[i] = {part(4 * i + 2), part(4 * i + 1), part(4 * i), 0};
}

FilmScreen::FilmScreen(const platform::AviFrame& first)
    : picture_(create_bitmap(layout_width, layout_height)),
      place_(place_film(first.width, first.height, layout_width, layout_height)) {
    if (!picture_ || !screen)
        return;
    clear_to_color(picture_.get(), makecol(0, 0, 0));
    blit(picture_.get(), screen, 0, 0, 0, 0, SCREEN_W, SCREEN_H);
    surface_.reset(create_bitmap_ex(first.bits, first.width, first.height));
    if (surface_)
        clear_bitmap(surface_.get());
}

// The picture has the screen's depth: only the film's pixels are converted, and the border stays black whatever the
// film's colour table holds.
void FilmScreen::show(const platform::AviFrame& frame) {
    decode_frame(surface_.get(), frame);
    PALETTE palette;
    if (frame.bits == 8) {
        film_palette(frame, palette);
        select_palette(palette);
    }
    blit(surface_.get(), picture_.get(), place_.source_x, place_.source_y, place_.x, place_.y, place_.width,
         place_.height);
    if (frame.bits == 8)
        unselect_palette();
    blit(picture_.get(), screen, place_.x, place_.y, place_.x, place_.y, place_.width, place_.height);
}

void play_film(const std::string& path, int effect) {
    const AtEnd input_discarded([] { // the next screen must not get the key or click that ended the film
        clear_keybuf();
        mouse_b = 0;
        forget_mouse_buttons();
    });
    const SwitchSet volume_again(sfx_volume);
    const AtEnd sound_dropped([effect] { drop_effect(effect); }); // films play once per run, and their sounds are large
    const auto [film, error] = platform::open_avi(platform::resolve_path(path));
    if (!film) {
        write_log(format_text("Error while initializing/loading AVI-File <%s>: %s", path.c_str(), error_text(error)));
        return;
    }
    const platform::AviFrame* first = film->frame_at(0);
    std::optional<FilmScreen> target;
    if (first)
        target.emplace(*first);
    if (!target || !target->ready()) {
        write_log(format_text("Error creating video surface for AVI-File:<%s>", path.c_str()));
        return;
    }
    clear_keybuf();
    forget_mouse_buttons();
    if (effect != no_effect) {
        current_theme = -1; // odd on purpose
        skip_requested();
        sfx_volume = film_effect_volume;
        play_effect(effect);
    }
    play(*film, *target);
}

} // namespace vcc
