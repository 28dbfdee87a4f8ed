// AVI films: headers, and a few frames.
#include "world.h"

#include "platform/avi.h"
#include "platform/avi_header.h"

using namespace vcc;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::World::start().write("a.avi", fuzz::as_text(data, size));
    platform::read_avi_header(fuzz::as_text(data, size));
    platform::AviError error = platform::AviError::none;
    const auto film = platform::open_avi("a.avi", error);
    if (!film)
        return 0;
    film->end_ms();
    for (const int time_ms : {0, 200, 40, 1 << 30})
        if (const platform::AviFrame* frame = film->frame_at(time_ms)) {
            unsigned sum = 0;
            for (const std::uint8_t byte : frame->rows)
                sum += byte;
            if (frame->width < 1 || frame->height < 1 || sum == 1u << 31)
                std::abort();
        }
    return 0;
}
