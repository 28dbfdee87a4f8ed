// AVI films: headers, and a few frames.
#include "media/avi.h"
#include "media/avi_header.h"
#include "world.h"

void vcc::fuzz::one_input(std::string_view input) {
    world().write("a.avi", input);
    platform::read_avi_header(input);
    const auto film = platform::open_avi("a.avi").film;
    if (!film)
        return;
    film->end_ms();
    for (const int time_ms : {0, 200, 40, 1 << 30})
        if (const platform::AviFrame* frame = film->frame_at(time_ms)) {
            unsigned sum = 0;
            for (int y = 0; y < frame->height; ++y)
                for (const unsigned byte : frame->row(y)) // every byte is ours
                    sum += byte;
            require(frame->width > 0 && frame->height > 0 && sum != 1u << 31);
        }
}
